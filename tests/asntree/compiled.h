#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "asntree/compile.h"
#include "asntree/directives.h"
#include "asntree/emit.h"
#include "asntree/listing.h"
#include "asntree/options.h"

/* What comes of a text in one run of the compiler, without files. */
struct Compiled {
    std::string errors;  /* "line: text" or, for a warning, "line: warning: text", each with "\n" */
    std::string listing; /* of all trees, without empty lines; nothing after an error */
};

inline std::string shortMessages(asntree::Diagnostics &diagnostics) {
    std::string all;
    std::istringstream lines(asntree::printed(diagnostics, false));
    for (std::string line; std::getline(lines, line);) {
        const bool counts = line.starts_with("text:") && line.find(": note: ") == line.npos;
        const std::size_t column = line.find(':', 5);
        const std::size_t text = line.find(": ");
        if (counts && column < text) {
            const bool isError = line.compare(text + 2, 7, "error: ") == 0;
            all += line.substr(5, column - 5) + ": " + line.substr(text + (isError ? 9 : 2)) + "\n";
        } else if (line.starts_with("asntree: error: ")) {
            all += line + "\n";
        }
    }
    return all;
}

inline Compiled compileText(const std::string &text, std::vector<std::string> options = {}) {
    using namespace asntree;
    Settings settings;
    Compilation c;
    std::vector<char *> arguments;
    options.insert(options.begin(), "asntree");
    options.emplace_back("text");
    for (std::string &option : options)
        arguments.push_back(option.data());
    Compiled result;
    if (!parseCommandLine(static_cast<int>(arguments.size()), arguments.data(), settings,
                          result.errors))
        return result;
    c.diagnostics.strict = settings.strict;
    settings.listingDirectory = "./";
    addFile(c, *addSource(c.sources, "text", text));
    std::vector<EmittedTree> trees;
    Plan plan;
    if (checkAll(c)) {
        Directives directives;
        takeDirectives(c, settings, directives);
        plan = makePlan(c, settings, definitionWords(c, directives));
        if (c.diagnostics.errors == 0)
            emitTrees(c, plan, settings, &directives, trees);
    }
    result.errors += shortMessages(c.diagnostics);
    if (c.diagnostics.errors != 0)
        return result;
    KnownTrees known;
    for (std::size_t i = 0; i < trees.size(); ++i)
        known.emplace(plan.trees[i].genPrefix, &trees[i].tree);
    for (std::size_t i = 0; i < trees.size(); ++i) {
        std::istringstream lines(
            listTree(trees[i].tree, known, listingNotes(c, plan.trees[i], trees[i])));
        for (std::string line; std::getline(lines, line);)
            result.listing += line.empty() ? "" : line + "\n";
    }
    return result;
}
