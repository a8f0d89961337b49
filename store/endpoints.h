#pragma once

#include "store/ketradef.h"

/* The lowest and the highest value, or size, that a type allows once all its constraints are taken
   together.

   An endpoint is a copy of a VNode of which kind and value count: a finite number (of REAL types a
   realVal), an infinity (testInfinity of values.h), or, if the constraints make no sense, invalid.
   Its flag tells whether the end is closed: SUB_UPPER_CLOSED, SUB_LOWER_CLOSED or 0 for an open
   one. */

inline bool isInvalidEndpoint(const VNode &end) {
    return end.valueKind == TYP_INVALID;
}

/* The upper (`plus`) or lower end of the current TNode, which stays current; after a finite end the
   current VNode is the record that has its value. False, and an invalid endpoint, for a type that
   has neither values in an order nor sizes. Constraints that never come to an end are fatal
   error 15. */
bool getEndpoint(VNode *end, std::uint8_t *flag, bool plus);
