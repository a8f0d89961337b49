#pragma once

#include "store/ketradef.h"

/* What is fixed for each kind of type, status and value form. */

struct TypeRow {
    int tagClass;
    int tagNumber; /* below 0: the kind has no tag of its own */
    bool constructed;
    const char *word; /* TYP_... */
    const char *text; /* ASN.1 name; empty for kinds without one */
};

/* One row for each main type from TYP_BOOLEAN to TYP_NONE. */
extern const TypeRow typeArr[TYP_COUNT];
/* The row of a main type; that of TYP_NONE for numbers outside the table. */
const TypeRow &typeRow(int mainType);

/* Main types below this number are built-in types with a name. */
inline constexpr int BUILTIN_TYPES = TYP_SYNONYM;

/* By CompStatus, from TCS_MANDATORY to TCS_FORMAL. */
inline constexpr int COMP_STATUS_WORDS = TCS_FORMAL + 1;
extern const char *const compStatusArr[COMP_STATUS_WORDS];

/* By ValueForm: word, C type, and member of the ASNHOME union; null where there is none. */
extern const char *const vfIdArr[VF_COUNT];
extern const char *const defaultCTypeArr[VF_COUNT];
extern const char *const asnhomeMemberArr[VF_COUNT];

/* The C type in the table that is installed; "?!?" for a form without one. */
const char *targetLangType(int valueForm);
