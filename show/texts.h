#pragma once

#include "base/text.h"

struct AsnConstraint;
struct AsnTag;
struct AsnType;
struct AsnValue;

/* Types in ASN.1 notation, on one line. */

/* "[APPLICATION 3]" */
Text tagText(const AsnTag *tag);
/* The type at its position up to its parts: tags, a reference or a kind, named numbers, and the
   constraints that are written there. */
Text typeHead(AsnType *type);
/* " OPTIONAL" or " DEFAULT ..." of a component; else empty. */
Text presenceText(AsnType *comp);
/* What governs something: a name where there is one; else no tags, and "{...}" for components. */
Text typeInShort(AsnType *type);
/* What it is without tags, parts and constraints. */
Text kindInShort(AsnType *type);
/* A SEQUENCE, SET or CHOICE, or a list, whose parts are written at its position. */
bool hasPartsHere(AsnType *type);

/* Constraints in ASN.1 notation. */

/* One node with all below it. */
Text constraintText(AsnType *type, AsnConstraint *constraint);
/* Those along the whole chain of references, the base's first, each in parentheses: what applies in
   the end. Of the position alone with `localOnly`. */
Text constraintsText(AsnType *type, bool localOnly);

/* A value in ASN.1 notation, as it is once all references are followed. */
Text valueText(AsnValue *value);
