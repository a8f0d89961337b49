#pragma once

struct AsnType;

/* Tests on the components of a value: presence, duplicates, missing ones, holes in integer sets. A
   begin opens a brace and its end closes it. */

/* Only for an optional component; nothing is written for others. */
void cBeginTestOptionalComp(int file, AsnType *father, AsnType *comp);
void cEndTestOptionalComp(int file, AsnType *comp);
/* A component of a SET that was seen before. */
void cBeginTestDuplicateSetComp(int file, AsnType *comp);
void cEndTestDuplicateSetComp(int file);
/* A mandatory component of a SET that wasn't seen; nothing for a SET without mandatory components.
 */
void cBeginTestMissingSetMandatoryComps(int file, AsnType *set);
void cEndTestMissingSetMandatoryComps(int file, AsnType *set);

/* "if (...)" that is true for a value in a hole of the type's integer set, with no brace. False,
   and nothing written, for a set without holes. */
bool cCheckIntegerValueSet(int file, AsnType *type);

/* The component's bit or number in the control member of its father, or in the local compmask of
   the function if the father has none: the statement that sets it, and "if (...)" on it. */
void cSetControlMember(int file, AsnType *comp);
void cTestControlMember(int file, AsnType *comp);
