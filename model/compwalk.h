#pragma once

#include "base/call.h"
#include "model/backend.h"

/* Walks over the components of a type. `compNbr` counts them from 0, extension markers included.
   A missing call-back is fatal error 18; a list without end, or a type that is a component of itself
   by COMPONENTS OF, is fatal error 15. */

using CompCall = Call<void(AsnType *father, AsnType *comp, int compNbr)>;
using ElemCall = Call<void(AsnType *father, AsnType *elem)>;

/* Components of SEQUENCE and SET, alternatives of CHOICE, extension markers among them; what
   COMPONENTS OF brings in stands in its place. A synonym definition shows none. */
void forEachTypeComp(AsnType *type, CompCall func);
/* The same for a question that may come from a call-back of such a walk: without meta records, and
   the running state of the walk in `type` stays as it is. */
void forEachTypeCompQuietly(AsnType *type, CompCall func);
/* From the last to the first, with the same numbers. */
void forEachTypeCompRevOrd(AsnType *type, CompCall func);
/* The element of SEQUENCE OF or SET OF. */
void forTypeElem(AsnType *type, ElemCall func);
void forEachTypeCompOrElem(AsnType *type, CompCall func);

/* How many calls such a walk makes: 1 for a list. The record's own count needn't include what
   COMPONENTS OF brings in, but it is the answer for a synonym. Worked out once for each type. */
int nrOfWalkedComps(AsnType *type);
