#pragma once

#include "base/text.h"
#include "cbet/functions.h"

struct AsnType;

/* Calls of the run-time library that allocate and release values and their homes. */

/* Allocation of a component that is held through a pointer, with its report on failure. */
void cAllocComp(int file, AsnType *comp, GIndex gIndex);
/* The memory handle of the calls below: "getHomeG (...)" with the option "MEMORY=" on, else "NULL".
 */
Text cGetHome(AsnType *type, GIndex gIndex);
/* A new home for the type's value. */
void cCreateHome(int file, AsnType *type, GIndex gIndex);
/* The home on the run-time stack, and off again; formats that own no memory write nothing. */
void cPushHome(int file, AsnType *type, GIndex gIndex);
void cPopHome(int file, AsnType *type, GIndex gIndex);
/* A new item at the end of a list in format VF_LIST, in the current a variable. */
void cAppendList(int file, AsnType *list, AsnType *elem, GIndex gIndex);
/* The release of a value's home. */
void cFreeAsn(int file, AsnType *type);
