#include "tests/support/codingcase.h"

#include <ostream>

#include "tests/support/paths.h"

void PrintTo(const CodingCase &value, std::ostream *out) {
    *out << value.name;
}

std::string behindIncludes(const std::string &text) {
    const std::string end = "#endif\n";
    const std::size_t place = text.rfind("#include \"");
    if (place == std::string::npos)
        return text;
    return text.substr(text.find(end, place) + end.size());
}

std::string generatedFunctions(const WorkDir &dir, TreeWriter &tree,
                               const std::vector<std::string> &arguments) {
    const std::string prefix =
        tree.strings8[static_cast<std::size_t>(tree.header().filePrefix) - 1];
    if (!tree.save(dir.path(prefix + ".stx")))
        return "no tree";
    std::vector<std::string> all = arguments;
    all.push_back(prefix);
    const ProgramRun run = runVelmo(dir, all);
    if (run.status != 0)
        return "status " + std::to_string(run.status) + "\n" + run.err;
    std::string functions = run.err.empty() ? "" : "messages:\n" + run.err;
    for (const char *word : {"cod", "enc", "dec", "tst", "ask", "pri"})
        if (dir.has(prefix + word + ".c"))
            functions +=
                "== " + prefix + word + ".c\n" + behindIncludes(dir.read(prefix + word + ".c"));
    return functions;
}

std::string compileFunctions(const WorkDir &dir, const std::vector<const char *> &quiet) {
    std::vector<std::string> flags = {"-std=c99", "-Wall", "-Wextra", "-I.",
                                      "-I" + sourceDir + "/rts"};
    flags.insert(flags.end(), quiet.begin(), quiet.end());
    std::string messages;
    bool hasFiles = false;
    for (const std::string &file : dir.files()) {
        if (!file.ends_with(".c"))
            continue;
        hasFiles = true;
        for (const char *compiler : {"gcc", "clang"})
            messages += compileC(dir, compiler, file, flags);
    }
    return hasFiles ? messages : "no function files\n";
}

namespace {

/* `files` are options that stand behind those of the case, since a category brings files of its
 * own.
 */
std::string faultsOfKinds(const CodingCase &codingCase, const std::string &goldenFolder,
                          const std::vector<const char *> &files) {
    WorkDir dir;
    TreeWriter tree("Case_Module", "t");
    for (const char *option : codingCase.options)
        tree.option(option);
    for (const char *option : files)
        tree.option(option);
    codingCase.build(tree);
    const std::string functions = generatedFunctions(dir, tree);
    std::string faults = compareGolden(goldenFolder + '/' + codingCase.name + ".txt", functions);
    if (codingCase.quiet.empty() || *codingCase.quiet.front() != '\0')
        faults += compileFunctions(dir, codingCase.quiet);
    return faults;
}

} // namespace

std::string faultsOf(const CodingCase &codingCase) {
    return faultsOfKinds(codingCase, "coding", {"-COD=1:1"});
}

std::string testingFaultsOf(const CodingCase &testingCase) {
    return faultsOfKinds(testingCase, "testing", {"-COD=0:0", "-TST=2:1"});
}
