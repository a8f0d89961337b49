#pragma once

#include "base/text.h"

struct AsnValue;

/* A value in ASN.1 notation, as it is once all references are followed. */
Text valueText(AsnValue *value);
