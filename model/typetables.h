#pragma once

#include "store/ketradef.h"

/* What is fixed for each status and value form; for kinds of type see store/typetable.h. */

/* Main types below this number are built-in types with a name. */
inline constexpr int BUILTIN_TYPES = TYP_SYNONYM;

/* By CompStatus, from TCS_MANDATORY to TCS_FORMAL. */
inline constexpr int COMP_STATUS_WORDS = TCS_FORMAL + 1;
extern const char *const compStatusArr[COMP_STATUS_WORDS];

/* By ValueForm: word, C type, and member of the ASNHOME union; null where there is none. */
extern const char *const vfIdArr[VF_COUNT];
extern const char *const defaultCTypeArr[VF_COUNT];
extern const char *const asnhomeMemberArr[VF_COUNT];

/* The C type; "?!?" for a form without one. */
const char *targetLangType(int valueForm);
