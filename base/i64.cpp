#include "base/i64.h"

#include <limits>

namespace {

using U64 = std::uint64_t;

/* The pair as one unsigned number, in which arithmetic wraps around instead of overflowing. */
U64 bits(sint64 a) {
    return U64{static_cast<std::uint32_t>(a.hi)} << 32 | a.lo;
}

sint64 fromBits(U64 value) {
    return {static_cast<std::int32_t>(static_cast<std::uint32_t>(value >> 32)),
            static_cast<std::uint32_t>(value)};
}

/* The amount of a number without its sign; that of the smallest number is 2 to the power 63. */
U64 magnitude(sint64 a) {
    return a.hi < 0 ? 0 - bits(a) : bits(a);
}

std::uint32_t magnitude(std::int32_t n) {
    const auto value = static_cast<std::uint32_t>(n);
    return n < 0 ? 0 - value : value;
}

} // namespace

sint64 i64ltosint64(std::int32_t n) {
    return {n < 0 ? -1 : 0, static_cast<std::uint32_t>(n)};
}
sint64 i64ultosint64(std::uint32_t u) {
    return {0, u};
}
sint64 i64make(std::int32_t hi, std::uint32_t lo) {
    return {hi, lo};
}
std::int32_t i64hi(sint64 a) {
    return a.hi;
}
std::uint32_t i64lo(sint64 a) {
    return a.lo;
}
sint64 i64max() {
    return {std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::uint32_t>::max()};
}
sint64 i64min() {
    return {std::numeric_limits<std::int32_t>::min(), 0};
}

sint64 i64add(sint64 a, sint64 b) {
    return fromBits(bits(a) + bits(b));
}
sint64 i64addl(sint64 a, std::int32_t n) {
    return i64add(a, i64ltosint64(n));
}
sint64 i64sub(sint64 a, sint64 b) {
    return fromBits(bits(a) - bits(b));
}
sint64 i64subl(sint64 a, std::int32_t n) {
    return i64sub(a, i64ltosint64(n));
}

sint64 i64divul(sint64 a, std::uint32_t u) {
    if (u == 0)
        return i64max();
    const sint64 quotient = fromBits(magnitude(a) / u);
    return i64isneg(a) ? i64neg(quotient) : quotient;
}

sint64 i64divl(sint64 a, std::int32_t n) {
    if (n == 0)
        return i64max();
    const sint64 quotient = i64divul(a, magnitude(n));
    return n < 0 ? i64neg(quotient) : quotient;
}

sint64 i64neg(sint64 a) {
    return fromBits(0 - bits(a));
}

bool i64iszero(sint64 a) {
    return a.hi == 0 && a.lo == 0;
}
bool i64ismax(sint64 a) {
    return a == i64max();
}
bool i64ismin(sint64 a) {
    return a == i64min();
}
bool i64isneg(sint64 a) {
    return a.hi < 0;
}

int i64cmp(sint64 a, sint64 b) {
    if (a.hi != b.hi)
        return a.hi < b.hi ? -1 : 1;
    if (a.lo != b.lo)
        return a.lo < b.lo ? -1 : 1;
    return 0;
}

int i64cmpl(sint64 a, std::int32_t n) {
    return i64cmp(a, i64ltosint64(n));
}
int i64cmpul(sint64 a, std::uint32_t u) {
    return i64cmp(a, i64ultosint64(u));
}

bool i64tol(sint64 a, std::int32_t *out) {
    const auto n = static_cast<std::int32_t>(a.lo);
    const bool fits = i64ltosint64(n) == a;
    *out = fits ? n : std::numeric_limits<std::int32_t>::max();
    return fits;
}

bool i64toul(sint64 a, std::uint32_t *out) {
    const bool fits = a.hi == 0;
    *out = fits ? a.lo : std::numeric_limits<std::uint32_t>::max();
    return fits;
}

Text i64tostr(sint64 a) {
    const Text digits = std::to_string(magnitude(a));
    return i64isneg(a) ? "-" + digits : digits;
}
