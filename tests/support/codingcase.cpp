#include "tests/support/codingcase.h"

#include <cstdio>

std::string behindIncludes(const std::string &text) {
    const std::string end = "#endif\n";
    const std::size_t place = text.rfind("#include \"");
    if (place == std::string::npos)
        return text;
    return text.substr(text.find(end, place) + end.size());
}

std::string generatedFunctions(const WorkDir &dir, TreeWriter &tree,
                               const std::vector<std::string> &arguments) {
    const std::string prefix = tree.strings8[static_cast<std::size_t>(tree.header().filePrefix) - 1];
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
            functions += "== " + prefix + word + ".c\n" +
                         behindIncludes(dir.read(prefix + word + ".c"));
    return functions;
}
