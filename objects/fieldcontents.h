#pragma once

#include "objects/fieldvalues.h"

/* Steps of the walks over field values that other walks of the model share. */

/* The place of the constraint that holds the objects of an object set field; none if the field is
   absent or its set has no constraint. Moves the current records. */
NodePlace findFieldSetConstraint(const AsnFieldValue *value);
