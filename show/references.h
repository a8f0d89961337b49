#pragma once

#include "store/ketravar.h"

struct AsnType;

/* What references are called: names as ASN.1 has them. */

/* The name of a TNode as seen from `module`: "Name", "Module.Name" for one elsewhere, and its
   number
   ("x#12") if it has none. Fatal error 9 if there is no such record. */
Text typeRecordName(const ModRec *module, const NodePlace &place);

/* The type at its position is written as a reference: a name, a selection or a field of a class. An
   instance of a parameterised type isn't: what it stands for is written nowhere else. */
bool isReferenceNotation(const AsnType *type);
/* Is it a reference to something with a name, so that its parts needn't be repeated? */
bool standsForDefinition(const AsnType *type);
/* "Name", "alternative < Choice", "CLASS.&field". */
Text referenceText(const AsnType *type);
/* Is this the name that somebody asks for? Trees may have "_" for each "-". */
bool isNameAskedFor(std::string_view name, std::string_view asked);
/* What a path of references ends at, by its first SNode. */
Text pathEndName(ModRec *module, RecNr first);
