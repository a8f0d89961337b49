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

std::string faultsOf(const CodingCase &codingCase) {
    WorkDir dir;
    TreeWriter tree("Case_Module", "t");
    for (const char *option : codingCase.options)
        tree.option(option);
    /* Behind those of the case, since a category brings files of its own. */
    tree.option(codingCase.kinds & CODING ? "-COD=1:1" : "-COD=0:0");
    tree.option(codingCase.kinds & TESTING ? "-TST=2:1" : "-TST=0:0");
    codingCase.build(tree);
    const std::string functions = generatedFunctions(dir, tree);
    const std::string name = codingCase.name;
    const std::size_t testing = codingCase.kinds & CODING ? functions.find("== task.c") : 0;
    std::string faults;
    if (codingCase.kinds & CODING)
        faults += compareGolden("coding/" + name + ".txt", functions.substr(0, testing));
    if (codingCase.kinds & TESTING)
        faults += testing == std::string::npos
                      ? functions
                      : compareGolden("testing/" + name + ".txt", functions.substr(testing));
    if (codingCase.kinds & TYPES)
        faults += compareGolden("types/" + name + ".typ", dir.read("t.typ"));
    if (codingCase.quiet.empty() || *codingCase.quiet.front() != '\0')
        faults += compileFunctions(dir, codingCase.quiet);
    return faults;
}
