#include "cbet/vars.h"

#include "base/fatal.h"
#include "base/files.h"
#include "cbet/homes.h"
#include "cbet/names.h"
#include "model/modules.h"
#include "options/ketracnf.h"

namespace {

struct LocalVar {
    int count = 0;
    Text type;
    Text name;
};
LocalVar localVars[VAR_KINDS];
bool isInEntryFunction = false;

/* The one place that a kind's number is looked up; fatal error 13 for another one. */
LocalVar &localVar(int kind) {
    if (kind < 0 || kind >= VAR_KINDS)
        fatalError(FATAL_INTERNAL, "CBET variable index overflow.");
    return localVars[kind];
}

} // namespace

/* --- the function under work --- */

void cInitVars() {
    bool signedCounter = false;
    forFirstModule([&](AsnModule *module) {
        signedCounter = testCGenerationOption(module, CGEN_SIGNED_CONTROL_MEMBER);
    });
    localVars[VAR_ASN_HOME] = {0, "ASNHOME *", "a"};
    localVars[VAR_HOME] = {0, "", "h"};
    localVars[VAR_N] = {0, signedCounter ? "sint32 " : "uint32 ", "n"};
    localVars[VAR_OK] = {0, "BOOLE ", "ok"};
}

void cResetVars() {
    for (LocalVar &var : localVars)
        var.count = 0;
}

EntryFunctionScope::EntryFunctionScope() {
    isInEntryFunction = true;
}
EntryFunctionScope::~EntryFunctionScope() {
    isInEntryFunction = false;
}
bool cIsInEntryFunction() {
    return isInEntryFunction;
}

/* --- counts: the number in a name is that of the blocks which have such a variable --- */

int cVarCount(int kind) {
    return localVar(kind).count;
}
void cIncVarCount(int kind) {
    ++localVar(kind).count;
}
void cDecVarCount(int kind) {
    --localVar(kind).count;
}

/* uint32 n1 = 0; */
void cVarDef(int file, int kind, const char *init) {
    const LocalVar &var = localVar(kind);
    putF(file, var.type, var.name, var.count, init != nullptr ? " = " : "", init, ";\n");
}

void cAsnHomeVarDef(int file) {
    cVarDef(file, VAR_ASN_HOME, "NULL");
}
void cNVarDef(int file) {
    cVarDef(file, VAR_N, "0");
}
void cOkVarDef(int file) {
    cVarDef(file, VAR_OK, nullptr);
}

/* Msg *h1 = */
void cHomeVarDef(int file, AsnType *type) {
    putF(file, cBaseTypeId(type), " *", cHomeVarRef(), " =");
}

/* n1 */
Text cVarRef(int kind) {
    const LocalVar &var = localVar(kind);
    return concat(var.name, var.count);
}

/* --- braces and blocks --- */

void cOpenBrace(int file) {
    putF(file, "{\n");
    ++fArr[file].indent;
}

void cCloseBrace(int file) {
    --fArr[file].indent;
    putF(file, "}\n");
}

void cBeginBlock(int file, AsnType *type) {
    cOpenBrace(file);
    /* T *h1 = (T *)home->x->val.stru; where the value is told from the home around the block */
    cIncHomeVarCount();
    cHomeVarDef(file, type);
    cDecHomeVarCount();
    putF(file, " ", cAsnHomeCompRef(type, HOME_ADDRESS), ";\n");
    cIncHomeVarCount();
}

void cEndBlock(int file) {
    cCloseBrace(file);
    cDecHomeVarCount();
}
