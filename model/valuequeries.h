#pragma once

#include "model/valuewalk.h"
#include "store/values.h"

/* What a generator asks of a value, and simple values as text. */

AsnType *getTypeOfValue(AsnValue *value); /* the governor; null for an infinity value */
int getValueMainType(AsnValue *value); /* MainType: the form in which the value was written */
int getValueCompStatus(AsnValue *value);
bool isValueExtensionmarker(AsnValue *value);
/* Other modules see the value. */
bool isVisibleValue(AsnValue *value);
bool isPlusInfinity(AsnValue *value);
bool isMinusInfinity(AsnValue *value);

bool booleanValue(AsnValue *value);
/* Warns of a number that doesn't fit 32 bits. */
std::int32_t integerValue(AsnValue *value);
sint64 int64Value(AsnValue *value);
realVal realValue(AsnValue *value);
double doubleRealValue(AsnValue *value);
std::int32_t octetStringLength(AsnValue *value);

/* The texts of infinite numbers; null keeps one. They are borrowed for the rest of the run. */
void setInfValueStri(const char *intMinus, const char *intPlus, const char *realMinus,
                     const char *realPlus);
Text booleanValueStri(AsnValue *value);
Text integerValueStri(AsnValue *value);
/* "{mantissa, base, exponent}". */
Text realValueStri(AsnValue *value);
/* The C text of a double, in as many digits as the module's options ask for: "15.00E-1". */
Text doubleRealValueStri(AsnValue *value);
