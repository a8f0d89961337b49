#include "asntree/compile.h"

#include "asntree/check.h"
#include "asntree/names.h"
#include "asntree/predefined.h"

namespace asntree {

void addFile(Compilation &c, SourceFile &file) {
    if (c.modules.empty())
        addPredefinedModule(c);
    const int errors = c.diagnostics.errors;
    lex(file, c.diagnostics);
    ParseContext parsing = c.parsing();
    const std::vector<Module *> modules = parseFile(parsing, file);
    const bool incomplete = c.diagnostics.errors != errors;
    for (Module *module : modules)
        addModule(c, module)->incomplete = incomplete;
    if (modules.empty() && !incomplete)
        error(c.diagnostics, {file.number, 0}, "the file holds no module");
}

bool checkAll(Compilation &c) {
    linkImports(c);
    if (checkChains(c))
        checkModules(c);
    return c.diagnostics.errors == 0;
}

} // namespace asntree
