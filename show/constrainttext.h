#pragma once

#include "base/text.h"

struct AsnConstraint;
struct AsnType;

/* Constraints in ASN.1 notation. */

/* One node with all below it. */
Text constraintText(AsnType *type, AsnConstraint *constraint);
/* Those along the whole chain of references, the base's first, each in parentheses: what applies in
   the end. Of the position alone with `localOnly`. */
Text constraintsText(AsnType *type, bool localOnly);
