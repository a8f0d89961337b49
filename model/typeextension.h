#pragma once

#include "model/backend.h"

/* Extension markers, and where a component stands to the one of its father. */

/* The marker itself. */
bool isTypeExtensionmarker(AsnType *type);
/* An extensible SEQUENCE, SET or CHOICE; ENUMERATED. */
bool isTypeExtensionmarkerComp(AsnType *type);
bool isExtensibleEnumeratedList(AsnType *type);
/* Number of the marker among the components, -1 without one. */
int getTypeExtensionmarkerCompNbr(AsnType *type);

/* The first component, a marker in front of it left out. */
bool isFirstActualTypeComp(AsnType *comp);

/* These two hold inside a walk over components only: is the component before, or the last one so
   far, OPTIONAL. */
bool prevTypeCompIsOptional(AsnType *comp);
bool lastTypeCompIsOptional(AsnType *type);
