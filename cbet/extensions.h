#pragma once

#include "base/text.h"
#include "cbet/functions.h"

struct AsnType;

/* The member `extensionmarker`, in which a value keeps what was found behind "...": reaching,
   testing, setting up and freeing it. All take the structure, and none writes anything for a type
   that has no extension marker. */

/* "if (...) {" or "case n: {" around what is done if the marker is present (or isn't). */
void cBeginTestExtensionmarker(int file, AsnType *type);
void cBeginTestNonexistentExtensionmarker(int file, AsnType *type);
void cEndTestExtensionmarker(int file, AsnType *type);

/* The address of the kept content; an empty `dst` for a type without marker. */
Text cRefExtensionmarker(AsnType *type);

/* First value of the member: with `structPrefix` at the start of the structure, without it when
   unknown components are met, where it may also create a home for them. `gIndex` names the context.
 */
void cInitExtensionmarker(int file, AsnType *type, GIndex gIndex, bool structPrefix);
/* Frees the home of the member, if it has one. */
void cFreeAsnExtensionmarker(int file, AsnType *type);

/* Sets the marker's bit or number in the control member of the structure. */
void cSetExtensionmarkerControlMember(int file, AsnType *type);
