#pragma once

#include "base/call.h"

struct AsnModule;
struct AsnType;

/* How a type is held in C, by its value form and options. None of these changes anything. */

/* --- values --- */

/* The value form, VF_FRM for a frame type. */
int cGetVF(AsnType *type);
/* The same for the member of an ASNHOME: the frame of a structure lies where the structure would. */
int cGetHomeVF(AsnType *type);
/* The value form's name in run-time calls, such as "VF_UI8". */
const char *cGetVFStri(AsnType *type);
/* The value form of an index into a table of `n` entries. */
int cTableAccessFunctionIndexVF(AsnModule *module, long n);
/* A number, BOOLEAN or NULL. */
bool cIsSimpleType(AsnType *type);
/* The run-time library has a C type for it. */
bool cIsPredefinedType(AsnType *type);
/* The encoded value is carried as it stands, as FRAME_PTR. */
bool cIsFrameType(AsnType *type);
/* C holds the value in a structure, so that a bare 0 would be the first of its members. */
bool cIsHeldInStructure(AsnType *type);
/* An INTEGER or ENUMERATED that is a structure, so that encoding and printing get its address. */
bool cIsNumberByAddress(AsnType *type);

/* --- strings and lists --- */

bool cIsStaticString(AsnType *type);
bool cIsDynamicString(AsnType *type);
/* Lists in array form, and in linked form. */
bool cIsStaticArray(AsnType *type);
bool cIsDynamicArray(AsnType *type);
bool cIsLinkedList(AsnType *type);
/* The form of the member "nIgnored", which counts what a decoder left out beyond a size limit;
   VF_NONE without such a member. */
int cIgnoredCountVF(AsnType *type);

/* --- control members (control.h) --- */

/* The C structure of the type holds a member that says what is present, wherever the structure
   lies; cIsControlMember: and it lies in one, not in hometab. */
bool cHasControlMember(AsnType *type);
bool cIsControlMember(AsnType *type);
/* Words in the mask of a SEQUENCE or SET; 0 for another type. */
int cNrOfMaskWords(AsnType *type);
/* The macro for a bit of the mask: "BIT", or "BITL" in a word of 32 bits; and the suffix of other
   constants for the member. */
const char *cBitMacro(AsnType *type);
const char *cControlSuffix(AsnType *type);

/* --- homes (homes.h) --- */

/* The type's member in an ASNHOME is a pointer to the value. */
bool cIsPtrAsnHomeMember(AsnType *type);
/* The components of the type are pointers to homes in its C structure. */
bool cIsHomeComponent(AsnType *type);
/* True while an entry function is being written, for a MORLA entry type: its components are reached
   through the parameter hometab. */
bool cIsHometab(AsnType *type);
/* The components, and the content of an extension marker, lie in homes: as in the two above. */
bool cHasCompHomes(AsnType *type);
/* The value of the component doesn't lie in its father's C structure. `father` may be null. */
bool cIsAsnHomeComp(AsnType *father, AsnType *comp);
/* The member is a pointer. */
bool cIsPointerMember(AsnType *type);

/* --- definitions --- */

/* The type has a C name of its own: it is a definition, or refers to one through synonyms that may
   lie in other modules. An instantiated type on the way has none. */
bool cIsDefinedBaseType(AsnType *type);
/* The C definition that the type rests on is written into the files of the current module. */
bool cIsBaseTypeGeneratedInCurrentModule(AsnType *type);
/* That definition, for a type that refers to one: `func` gets a handle on it, on the module in
   which it stands. No call if it is written elsewhere. */
void cForTypeGeneratedInCurrentModule(AsnType *type, Call<void(AsnType *defined)> func);
/* The structure of `comp` has a definition of its own in front of its father's. */
bool cHasOwnDefinition(AsnType *father, AsnType *comp);
