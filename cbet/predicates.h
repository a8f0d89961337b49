#pragma once

#include "base/call.h"

struct AsnType;

/* What a type is in C, by its value form and options. None of these changes anything. */

/* A number, BOOLEAN or NULL. */
bool cIsSimpleType(AsnType *type);
/* The run-time library has a C type for it. */
bool cIsPredefinedType(AsnType *type);
/* The encoded value is carried as it stands, as FRAME_PTR. */
bool cIsFrameType(AsnType *type);
bool cIsStaticString(AsnType *type);
bool cIsDynamicString(AsnType *type);
/* Lists in array form. */
bool cIsStaticArray(AsnType *type);
bool cIsDynamicArray(AsnType *type);
/* The type's member in an ASNHOME is a pointer to the value. */
bool cIsPtrAsnHomeMember(AsnType *type);
/* The components of the type are pointers to homes in its C structure. */
bool cIsHomeComponent(AsnType *type);
/* True while an entry function is being written, for a MORLA entry type: its components are reached
   through the parameter hometab. */
bool cIsHometab(AsnType *type);
/* The components, and the content of an extension marker, lie in homes: as in the two above. */
bool cHasCompHomes(AsnType *type);
/* The C structure of the type holds a member that says what is present. */
bool cIsControlMember(AsnType *type);

/* The value form, VF_FRM for a frame type. */
int cGetVF(AsnType *type);
/* The same for the member of an ASNHOME: the frame of a structure lies where the structure would. */
int cGetHomeVF(AsnType *type);
/* The value form's name in run-time calls, such as "VF_UI8". */
const char *cGetVFStri(AsnType *type);

/* The type has a C name of its own: it is a definition, or refers to one through synonyms that may
   lie in other modules. An instantiated type on the way has none. */
bool cIsDefinedBaseType(AsnType *type);
/* The C definition that the type rests on is written into the files of the current module. */
bool cIsBaseTypeGeneratedInCurrentModule(AsnType *type);
/* That definition, for a type that refers to one: `func` gets a handle on it, on the module in
   which it stands. No call if it is written elsewhere. */
void cForTypeGeneratedInCurrentModule(AsnType *type, Call<void(AsnType *defined)> func);
