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

LocalVar &localVar(int kind) {
    if (kind < 0 || kind >= VAR_KINDS)
        fatalError(FATAL_INTERNAL, "CBET variable index overflow.");
    return localVars[kind];
}

} // namespace

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

int cVarCount(int kind) {
    return localVar(kind).count;
}
void cIncVarCount(int kind) {
    ++localVar(kind).count;
}
void cDecVarCount(int kind) {
    --localVar(kind).count;
}

void cVarDef(int file, int kind, const char *init) {
    const LocalVar &var = localVar(kind);
    printfToF(file, "%s%s%d%s%s;\n", var.type.c_str(), var.name.c_str(), var.count,
              init != nullptr ? " = " : "", orEmpty(init));
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

void cHomeVarDef(int file, AsnType *type) {
    Text typeId;
    printfToF(file, "%s *h%d =", cBaseTypeId(typeId, nullptr, type, nullptr).c_str(),
              cVarCount(VAR_HOME));
}

Text &cVarRef(Text &dst, const char *prefix, int kind, const char *postfix) {
    const LocalVar &var = localVar(kind);
    return dst = orEmpty(prefix) + var.name + std::to_string(var.count) + orEmpty(postfix);
}

Text &cAsnHomeVarRef(Text &dst, const char *prefix, const char *postfix) {
    return cVarRef(dst, prefix, VAR_ASN_HOME, postfix);
}

Text &cNVarRef(Text &dst, const char *prefix, const char *postfix) {
    return cVarRef(dst, prefix, VAR_N, postfix);
}

Text &cOkVarRef(Text &dst, const char *prefix, const char *postfix) {
    return cVarRef(dst, prefix, VAR_OK, postfix);
}

void cOpenBrace(int file) {
    wToF(file, "{\n");
    ++fArr[file].indent;
}

void cCloseBrace(int file) {
    --fArr[file].indent;
    wToF(file, "}\n");
}

void cBeginBlock(int file, AsnType *type) {
    cOpenBrace(file);
    /* T *h1 = (T *)home->x->val.stru; where the value is told from the home around the block */
    cIncHomeVarCount();
    cHomeVarDef(file, type);
    cDecHomeVarCount();
    cAsnHomeCompRefToF(file, " ", true, type, nullptr, ";\n");
    cIncHomeVarCount();
}

void cEndBlock(int file) {
    cCloseBrace(file);
    cDecHomeVarCount();
}
