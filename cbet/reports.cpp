#include "cbet/reports.h"

#include <cstdio>
#include <set>

#include "base/fatal.h"
#include "base/files.h"
#include "cbet/lists.h"
#include "cbet/vars.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"

/* --- what the run says --- */

void cSayAtType(AsnType *type, const char *text) {
    static std::set<Text> said;
    const Text path = getModuleFilePath(getModuleOfType(type));
    const Text line = concat(path, ":", getTypeDefinitionLine(type), ": ", text, "\n");
    if (said.insert(line).second)
        std::fputs(line.c_str(), stderr);
}

void cRefuseType(AsnType *type, const char *text) {
    cSayAtType(type, concat("error: ", text).c_str());
    glbExitCode = 1;
}

/* --- what generated code says --- */

void cReportError(int file, const char *name) {
    putF(file, "reportError (ASNG_F(asncodg) ", name, ");\n");
}

void cReportFatalError(int file, const char *name) {
    putF(file, "reportFatalError (", name, ");\n");
}

/* --- paths --- */

namespace {

/* The option "PUSHPATH=" of the module in which the type stands. */
bool tracksPath(AsnType *type) {
    return getGlobalOptions(getModuleOfType(type))->pushPath != 0;
}

/* pushPath (ASNG_F(asncodg) "Msg"); */
void pushName(int file, const Text &name) {
    putF(file, "pushPath (ASNG_F(asncodg) \"", name, "\");\n");
}

/* popPath (ASNG_F(asncodg) 4); takes off the name and the "." in front of it */
void popLength(int file, std::size_t length) {
    putF(file, "popPath (ASNG_F(asncodg) ", static_cast<int>(length), ");\n");
}

/* An alternative stands in the union i1, unless its own components are held through pointers. */
Text compPathName(AsnType *comp) {
    bool inUnion =
        getTypeCompStatus(comp) == TCS_CHOICE && !testTypeOption(comp, OPT_COMPS_AS_POINTERS);
    return concat(inUnion ? "i1." : nullptr, getTypeCompId(comp));
}

} // namespace

/* The way begins with the name of the entry type ... */
void cPushEntryPath(int file, AsnType *type) {
    if (tracksPath(type))
        pushName(file, getDefTypeId(type));
}

void cPopEntryPath(int file, AsnType *type) {
    if (tracksPath(type))
        popLength(file, getDefTypeId(type).size() + 1);
}

/* ... goes on with each component ... */
void cPushPath(int file, AsnType *comp) {
    if (tracksPath(comp))
        pushName(file, compPathName(comp));
}

void cPopPath(int file, AsnType *comp) {
    if (tracksPath(comp))
        popLength(file,
                  getTypeCompStatus(comp) == TCS_MULTIPLE ? 0 : compPathName(comp).size() + 1);
}

/* ... and counts the elements of a list: pushElem (ASNG_F(asncodg) n1); */
void cPushElem(int file, AsnType *list) {
    if (!tracksPath(list))
        return;
    putF(file, "pushElem (ASNG_F(asncodg) ",
         getVF(list) == VF_LIST ? cGetSize(list, false) : cNVarRef(), ");\n");
}
