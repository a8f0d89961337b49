#pragma once

#include "base/call.h"
#include "model/backend.h"

/* Walks over the components of a type. `compNbr` counts them from 0, extension markers included.
   The place of a walk is the component cursor of the type's module handle: the forEach functions
   put it back around each call, users of first... and next... do so themselves. A missing call-back
   is fatal error 18; a list without end, or a type that is a component of itself by COMPONENTS OF,
   is fatal error 15. */

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

/* The list of one record, without expansion of COMPONENTS OF. `nr` numbers automatic tags. With
   `compsOnly` a type without components shows nothing; without it a list shows its element. */
AsnType *firstTypeComp(AsnType *type, bool compsOnly, int nr);
AsnType *nextTypeComp(AsnType *comp, int nr);
AsnType *lastTypeComp(AsnType *type, int nr);
AsnType *prevTypeComp(AsnType *comp, int nr);
/* The engine of the walks over components: calls for the sons of `walked` as sons of `owner`, which
   differ inside COMPONENTS OF only. `nr` counts automatic tags. One call-back is given. */
void forEachSon(AsnType *owner, AsnType *walked, CompCall compFunc, ElemCall elemFunc, bool revOrd,
                bool compsOnly, int *nr);
