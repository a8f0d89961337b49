#pragma once

#include "base/text.h"

struct AsnType;

/* What is open in the function that is being written: local variables in nested blocks, and the
   braces around them. A variable's name is that of its kind and the count of variables of the kind that are open, so
   nested blocks get new names, and blocks beside one another use the same ones again. */

enum VarKind : int {
    VAR_ASN_HOME = 0, /* a1: list item, ASNHOME * */
    VAR_HOME = 1,     /* h1: block home */
    VAR_N = 2,        /* n1: list counter */
    VAR_OK = 3,       /* ok1: result of a constraint check */
    VAR_KINDS,
};

/* Texts of the four kinds; the counter's type follows the first module's "C-GENERATION=". */
void cInitVars();
/* All counts to 0, as at the head of a function. */
void cResetVars();

/* While one lives, an entry function is being written. */
class EntryFunctionScope {
public:
    EntryFunctionScope();
    ~EntryFunctionScope();
    EntryFunctionScope(const EntryFunctionScope &) = delete;
    EntryFunctionScope &operator=(const EntryFunctionScope &) = delete;
};
bool cIsInEntryFunction();

/* Number of variables of the kind that are open. */
int cVarCount(int kind);
void cIncVarCount(int kind);
void cDecVarCount(int kind);
inline void cIncAsnHomeVarCount() {
    cIncVarCount(VAR_ASN_HOME);
}
inline void cIncHomeVarCount() {
    cIncVarCount(VAR_HOME);
}
inline void cIncNVarCount() {
    cIncVarCount(VAR_N);
}
inline void cIncOkVarCount() {
    cIncVarCount(VAR_OK);
}
inline void cDecAsnHomeVarCount() {
    cDecVarCount(VAR_ASN_HOME);
}
inline void cDecHomeVarCount() {
    cDecVarCount(VAR_HOME);
}
inline void cDecNVarCount() {
    cDecVarCount(VAR_N);
}
inline void cDecOkVarCount() {
    cDecVarCount(VAR_OK);
}

/* The definition of the innermost variable of a kind: "uint32 n1 = 0;\n"; without `init` no value.
 */
void cVarDef(int file, int kind, const char *init);
void cAsnHomeVarDef(int file); /* "ASNHOME *a1 = NULL;\n" */
void cNVarDef(int file);       /* "uint32 n1 = 0;\n" */
void cOkVarDef(int file);      /* "BOOLE ok1;\n" */
/* "Msg *h1 =" for the innermost block home; the value and ";\n" are the caller's. */
void cHomeVarDef(int file, AsnType *type);

/* The name of the innermost variable of a kind. */
Text cVarRef(int kind);
inline Text cAsnHomeVarRef() {
    return cVarRef(VAR_ASN_HOME);
}
inline Text cHomeVarRef() {
    return cVarRef(VAR_HOME);
}
inline Text cNVarRef() {
    return cVarRef(VAR_N);
}
inline Text cOkVarRef() {
    return cVarRef(VAR_OK);
}
/* The flag beside a list counter, that more elements follow than the list may hold. */
inline Text cExtraElemsVarRef() {
    return concat("extraElems", cVarCount(VAR_N));
}

/* The two ends of a Block, for braces that one function opens and another one closes. */
void cOpenBrace(int file);
void cCloseBrace(int file);
/* A block with a home of its own: "{\n" and "Msg *h1 = (Msg *)home->x->val.stru;\n". */
void cBeginBlock(int file, AsnType *type);
void cEndBlock(int file);
