#pragma once

#include <vector>

#include "asntree/number.h"

namespace asntree {

struct NumberRange {
    Number lower;
    Number upper;
};

/* A set of whole numbers: ranges in ascending order that neither overlap nor touch. */
struct NumberSet {
    std::vector<NumberRange> ranges;

    static NumberSet all() { return {{{Number::least(), Number::greatest()}}}; }
    static NumberSet of(Number lower, Number upper);            /* empty if lower > upper */
    static NumberSet ofRanges(std::vector<NumberRange> ranges); /* in any order */
    bool empty() const { return ranges.empty(); }
    const Number &lower() const { return ranges.front().lower; } /* not of an empty set */
    const Number &upper() const { return ranges.back().upper; }
};

NumberSet intersected(const NumberSet &a, const NumberSet &b);
NumberSet without(const NumberSet &a, const NumberSet &b);
bool contains(const NumberSet &set, const Number &number);
bool isWithin(const NumberSet &inner, const NumberSet &outer);
/* "1..5 | 7"; of many ranges only the first. */
std::string textOf(const NumberSet &set);

} // namespace asntree
