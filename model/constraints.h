#pragma once

#include "base/call.h"
#include "store/ketradef.h"

/* Walking the constraints of a type: the list that was gathered along its synonym chain, and the
   tree below each of them.

   A function for one kind of constraint does nothing for another kind, so a generator may call them
   in a row or choose by getConstraintKind. Call-backs borrow the handles that they get. Broken
   trees end the run: fatal error 9 for a part that is missing, 15 for one that loops or nests too
   deep. */

struct AsnType;
struct AsnValue;

/* One node of a constraint, as seen from the type that it applies to. */
struct AsnConstraint {
    ModRec *module = nullptr; /* of the node; null if the walk made the node up */
    SubRec sub;               /* a copy: flags may differ from the record's */
};

/* Each constraint of the list, the base's first, or of its local part, that is not of the kind passed over. */
void forEachTypeConstraint(AsnType *type,
                           Call<void(AsnType *type, AsnConstraint *constraint)> func);
void forEachLocalTypeConstraint(AsnType *type,
                                Call<void(AsnType *type, AsnConstraint *constraint)> func);
/* Constraints were written at the type's position; a single one that is passed over doesn't count.
 */
bool isLocalTypeConstraints(AsnType *type);
int getNrOfTypeConstraints(AsnType *type);
int getNrOfLocalTypeConstraints(AsnType *type);

/* Questions of one node. */
int getConstraintKind(const AsnConstraint *constraint); /* SubKind */
bool isLeafConstraint(const AsnConstraint *constraint); /* a range or a single value */
enum PresenceKind : int {
    PRESENCE_PRESENT = 2,
    PRESENCE_ABSENT = 3,
    PRESENCE_OPTIONAL = 4,
    PRESENCE_NONE = 255,
};
bool isPresenceConstraint(const AsnConstraint *constraint);
int getPresenceConstraintKind(const AsnConstraint *constraint); /* PresenceKind */

/* The word of a kind, null for a kind that has none. */
const char *subKindName(int kind);

/* Sets: `nbr` counts the elements from 0. */
void forUnionConstraint(AsnType *type, AsnConstraint *constraint,
                        Call<void(AsnType *type, AsnConstraint *element, int nbr)> func);
void forIntersectionConstraint(AsnType *type, AsnConstraint *constraint,
                               Call<void(AsnType *type, AsnConstraint *element, int nbr)> func);
void forEachCatenatedConstraint(AsnType *type, AsnConstraint *constraint,
                                Call<void(AsnType *type, AsnConstraint *element)> func);
void forExceptConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnConstraint *included, AsnConstraint *excluded)> func);
void forAllExceptConstraint(AsnType *type, AsnConstraint *constraint,
                            Call<void(AsnType *type, AsnConstraint *excluded)> func);
void forSizeConstraint(AsnType *type, AsnConstraint *constraint,
                       Call<void(AsnType *type, AsnConstraint *size)> func);
void forPermittedAlphabetConstraint(AsnType *type, AsnConstraint *constraint,
                                    Call<void(AsnType *type, AsnConstraint *alphabet)> func);

/* Leaves. Fatal error 13 if a single value isn't a value; an end without one is an infinity value.
 */
void forSingleValueConstraint(AsnType *type, AsnConstraint *constraint,
                              Call<void(AsnType *type, AsnValue *value)> func);
void forValueRangeConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed)> func);
/* The end of a range of whole numbers alone, without the handle of a value. */
sint64 getRangeEnd(AsnType *type, const AsnConstraint *constraint, bool isUpper);

/* Each constraint of the contained type; the second form shows that type, too. */
void forContainedSubtypeConstraint(AsnType *type, AsnConstraint *constraint,
                                   Call<void(AsnType *type, AsnConstraint *inner)> func);
void forContSubtypeConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnType *contained, AsnConstraint *inner)> func);

/* The element of a list type, with the constraint on it. */
void forWithComponentConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnType *element, AsnConstraint *inner)> func);
/* Components of a structure with the constraint on each. Components that a full specification
   leaves out, and alternatives of a CHOICE that any leaves out, come with a node that says ABSENT.
 */
void forWithComponentsConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnType *comp, AsnConstraint *inner, int compNbr)> func);
