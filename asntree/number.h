#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace asntree {

/* A whole number of any size, and the two infinities, which stand for MIN and MAX. */
struct Number {
    enum Kind : std::int8_t { MinusInfinite = -1, Finite = 0, PlusInfinite = 1 } kind = Finite;
    bool negative = false;    /* never with the digits "0" */
    std::string digits = "0"; /* decimal, without leading zeros */

    static Number of(std::int64_t number);
    static Number ofDigits(std::string_view digits, bool negative = false);
    static Number least() { return {MinusInfinite, false, "0"}; }
    static Number greatest() { return {PlusInfinite, false, "0"}; }
    bool finite() const { return kind == Finite; }
};

/* Sign of a - b. */
int compare(const Number &a, const Number &b);
inline bool operator<(const Number &a, const Number &b) {
    return compare(a, b) < 0;
}
inline bool operator<=(const Number &a, const Number &b) {
    return compare(a, b) <= 0;
}
inline bool operator==(const Number &a, const Number &b) {
    return compare(a, b) == 0;
}
/* a + 1 and a - 1; an infinity stays one. */
Number next(const Number &a);
Number previous(const Number &a);
/* The number if it fits; an infinity doesn't. */
std::optional<std::int64_t> asInt64(const Number &a);
std::optional<std::uint64_t> asUint64(const Number &a);
/* "-5", "MIN", "MAX". */
std::string textOf(const Number &a);

} // namespace asntree
