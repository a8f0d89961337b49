#pragma once

#include <compare>
#include <cstdint>

#include "base/text.h"

/* A 64-bit signed number as the pair of words in which trees and generated code hold it: `hi`
   carries the sign, the value is two's complement over the pair. All arithmetic goes through the
   i64 functions; it wraps around and never overflows. The largest and the smallest number also
   stand for PLUS-INFINITY and MINUS-INFINITY. */
struct sint64 {
    std::int32_t hi = 0;
    std::uint32_t lo = 0;
    bool operator==(const sint64 &) const = default;
};

sint64 i64ltosint64(std::int32_t n);
sint64 i64ultosint64(std::uint32_t u);
sint64 i64make(std::int32_t hi, std::uint32_t lo);
std::int32_t i64hi(sint64 a);
std::uint32_t i64lo(sint64 a);
sint64 i64max();
sint64 i64min();

sint64 i64add(sint64 a, sint64 b);
sint64 i64addl(sint64 a, std::int32_t n);
sint64 i64sub(sint64 a, sint64 b);
sint64 i64subl(sint64 a, std::int32_t n);
/* Quotients are truncated toward 0; a divisor of 0 gives i64max. */
sint64 i64divl(sint64 a, std::int32_t n);
sint64 i64divul(sint64 a, std::uint32_t u);
sint64 i64neg(sint64 a);

bool i64iszero(sint64 a);
bool i64ismax(sint64 a);
bool i64ismin(sint64 a);
bool i64isneg(sint64 a);
/* -1, 0 or 1. */
int i64cmp(sint64 a, sint64 b);
int i64cmpl(sint64 a, std::int32_t n);
int i64cmpul(sint64 a, std::uint32_t u);

/* True, and the number in `*out`, if it fits; otherwise false and 0x7FFFFFFF or 0xFFFFFFFF. */
bool i64tol(sint64 a, std::int32_t *out);
bool i64toul(sint64 a, std::uint32_t *out);
/* The decimal text. */
Text i64tostr(sint64 a);
