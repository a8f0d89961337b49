#pragma once

#include "base/text.h"

struct AsnTag;
struct AsnType;

/* Types in ASN.1 notation, on one line. */

/* "[APPLICATION 3]" */
Text tagText(const AsnTag *tag);
/* The type at its position up to its parts: tags, a reference or a kind, named numbers, and the
   constraints that are written there. */
Text typeHead(AsnType *type);
/* " OPTIONAL" or " DEFAULT ..." of a component; else empty. */
Text presenceText(AsnType *comp);
/* What governs something: a name where there is one; else no tags, and "{...}" for parts. */
Text typeInShort(AsnType *type);
/* What it is without tags, parts and constraints. */
Text kindInShort(AsnType *type);
/* A SEQUENCE, SET or CHOICE, or a list, whose parts are written at its position. */
bool hasPartsHere(AsnType *type);
