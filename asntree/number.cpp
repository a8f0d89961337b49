#include "asntree/number.h"

#include <limits>

namespace asntree {

namespace {

/* Sign of a - b for two numbers without a sign. */
int compareDigits(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    const int order = a.compare(b);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

void increment(std::string &digits) {
    for (std::size_t at = digits.size(); at-- > 0;) {
        if (digits[at] != '9') {
            ++digits[at];
            return;
        }
        digits[at] = '0';
    }
    digits.insert(digits.begin(), '1');
}

/* Not of "0". */
void decrement(std::string &digits) {
    std::size_t at = digits.size() - 1;
    while (digits[at] == '0')
        digits[at--] = '9';
    --digits[at];
    if (digits.size() > 1 && digits.front() == '0')
        digits.erase(digits.begin());
}

/* The number if it is at most `limit`. */
std::optional<std::uint64_t> magnitude(std::string_view digits, std::uint64_t limit) {
    std::uint64_t result = 0;
    for (const char digit : digits) {
        const auto value = static_cast<std::uint64_t>(digit - '0');
        if (result > (limit - value) / 10)
            return std::nullopt;
        result = result * 10 + value;
    }
    return result;
}

} // namespace

Number Number::of(std::int64_t number) {
    std::string digits = std::to_string(number);
    if (number < 0)
        digits.erase(0, 1);
    return {Finite, number < 0, std::move(digits)};
}

Number Number::ofDigits(std::string_view digits, bool negative) {
    const std::size_t first = digits.find_first_not_of('0');
    if (first == std::string_view::npos)
        return {};
    return {Finite, negative, std::string(digits.substr(first))};
}

int compare(const Number &a, const Number &b) {
    if (a.kind != b.kind)
        return a.kind < b.kind ? -1 : 1;
    if (!a.finite())
        return 0;
    if (a.negative != b.negative)
        return a.negative ? -1 : 1;
    const int order = compareDigits(a.digits, b.digits);
    return a.negative ? -order : order;
}

Number next(const Number &a) {
    Number result = a;
    if (!a.finite())
        return result;
    if (a.negative)
        decrement(result.digits);
    else
        increment(result.digits);
    result.negative = a.negative && result.digits != "0";
    return result;
}

Number previous(const Number &a) {
    Number result = a;
    if (!a.finite())
        return result;
    if (a.negative) {
        increment(result.digits);
    } else if (a.digits == "0") {
        result.digits.assign(1, '1');
        result.negative = true;
    } else {
        decrement(result.digits);
    }
    return result;
}

std::optional<std::int64_t> asInt64(const Number &a) {
    constexpr std::uint64_t greatest = std::numeric_limits<std::int64_t>::max();
    if (!a.finite())
        return std::nullopt;
    const auto number = magnitude(a.digits, a.negative ? greatest + 1 : greatest);
    if (!number)
        return std::nullopt;
    if (a.negative)
        return static_cast<std::int64_t>(0 - *number);
    return static_cast<std::int64_t>(*number);
}

std::optional<std::uint64_t> asUint64(const Number &a) {
    if (!a.finite() || a.negative)
        return std::nullopt;
    return magnitude(a.digits, std::numeric_limits<std::uint64_t>::max());
}

std::string textOf(const Number &a) {
    if (!a.finite())
        return a.kind == Number::MinusInfinite ? "MIN" : "MAX";
    return a.negative ? "-" + a.digits : a.digits;
}

} // namespace asntree
