#include "tests/support/gencase.h"

#include <sstream>

#include "tests/support/golden.h"

namespace {

std::string prefixOf(const TreeWriter &tree) {
    return tree.strings8[static_cast<std::size_t>(tree.mNodes.front().filePrefix) - 1];
}

/* From behind the last include, or the guard, up to the end of the guard. */
std::string content(std::string text) {
    for (const std::string linkage : {"\n#ifdef __cplusplus\nextern \"C\" {\n#endif\n",
                                      "\n#ifdef __cplusplus\n}\n#endif\n"})
        if (const std::size_t place = text.find(linkage); place != std::string::npos)
            text.erase(place, linkage.size());
    std::size_t begin = text.rfind("#include \"");
    begin = begin == std::string::npos ? text.find("#define ") : text.find("#endif\n", begin);
    begin = begin == std::string::npos ? 0 : text.find('\n', begin) + 1;
    const std::size_t end = text.rfind("\n#endif /*");
    return text.substr(begin, end == std::string::npos ? end : end - begin);
}

} // namespace

std::string generatedFiles(const WorkDir &dir, const std::vector<TreeWriter *> &trees,
                           const std::vector<std::string> &suffixes) {
    for (TreeWriter *tree : trees)
        if (!tree->save(dir.path(prefixOf(*tree) + ".stx")))
            return "no tree";
    const std::string prefix = prefixOf(*trees.front());
    const ProgramRun run = runVelmo(dir, {"-VERBOSE=quiet", prefix});
    std::string all = run.status == 0 ? "" : "status " + std::to_string(run.status) + "\n";
    all += run.out + run.err;
    for (const std::string &suffix : suffixes) {
        const std::string name = prefix + suffix;
        all += "== " + name + (dir.has(name) ? "\n" + content(dir.read(name)) : ": none\n");
    }
    return all;
}

void addOptions(TreeWriter &tree, const std::vector<const char *> &options,
                const std::vector<const char *> &toolOptions) {
    for (const char *option : options)
        tree.option(option);
    for (const char *option : toolOptions)
        tree.backendOption(option);
}

std::string compilerMessages(const WorkDir &dir, const std::vector<std::string> &files,
                             const std::vector<std::string> &flags) {
    std::vector<std::string> all = {"-std=c99",  "-Wall", "-Wextra",
                                    "-pedantic", "-I.",   "-I" + sourceDir + "/rts"};
    all.insert(all.end(), flags.begin(), flags.end());
    std::string messages;
    for (const std::string &file : files)
        for (const char *compiler : {"gcc", "clang"})
            if (const std::string said = compileC(dir, compiler, file, all); !said.empty())
                messages += std::string(compiler) + " " + file + ":\n" + said;
    return messages;
}

std::string usesOfDefines(const WorkDir &dir, const std::string &prefix) {
    const std::string heading = "/* accessors for ", define = "#define ";
    std::string source = "#include \"asnuti.ext\"\n#include \"" + prefix + ".typ\"\n#include \"" +
                         prefix + ".def\"\nvoid uses(void *structure, ASNHOME *elem);\n" +
                         "void uses(void *structure, ASNHOME *elem)\n{\n  (void)elem;\n" +
                         "  (void)structure;\n";
    std::istringstream text(dir.read(prefix + ".def"));
    std::string type;
    for (std::string line; std::getline(text, line);) {
        if (line.compare(0, heading.size(), heading) == 0)
            type = line.substr(heading.size(), line.find(" */") - heading.size());
        if (line.compare(0, define.size(), define) != 0)
            continue;
        const std::size_t end = line.find_first_of(" (", define.size());
        const std::string name = line.substr(define.size(), end - define.size());
        if (end == std::string::npos || end + 1 == line.size())
            continue;
        if (line.compare(end, 6, "(elem)") == 0)
            source += "  (void)" + name + "(elem);\n";
        else if (line.compare(end, 2, "()") == 0)
            source += "  (void)" + name + "();\n";
        else if (line.compare(end, 6, "(iter)") == 0)
            source += "  (void)" + name + "(first" + name.substr(4) + "());\n";
        else if (line[end] == '(' && line.compare(end, 5, "(obj)") != 0)
            source += "  (void)" + name + "((struct t_" + type + " *)structure);\n";
        else if (line[end] != '(')
            source += "  (void)(" + name + ");\n";
    }
    return source + "}\n";
}
