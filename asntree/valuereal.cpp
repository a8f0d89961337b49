#include <algorithm>

#include "asntree/reading.h"

/* Values of REAL. */

namespace asntree {

namespace {

void keepReal(Reading &r, RealNumber real) {
    r.datum.kind = DatumKind::Real;
    r.datum.real = std::move(real);
}

void keepSpecial(Reading &r, RealNumber::Special special) {
    RealNumber real;
    real.special = special;
    keepReal(r, std::move(real));
}

bool takeExponent(Reading &r, const Number &number, std::int64_t shift, std::int64_t &exponent) {
    constexpr std::int64_t MOST = 1000000000;
    const auto value = asInt64(number);
    if (!value || *value > MOST || *value < -MOST) {
        error(r.c.diagnostics, r.value().place, "the exponent is too large");
        return false;
    }
    exponent = *value + shift;
    return true;
}

/* "12.5E-3": the digits without the point, and the exponent that this leaves. */
void readDecimal(Reading &r) {
    const std::string_view text = r.value().text;
    const std::size_t e = std::min(text.find_first_of("eE"), text.size());
    const std::string_view front = text.substr(0, e);
    const std::size_t point = std::min(front.find('.'), front.size());
    std::string digits(front.substr(0, point));
    std::int64_t shift = 0;
    if (point < front.size()) {
        digits += front.substr(point + 1);
        shift = -static_cast<std::int64_t>(front.size() - point - 1);
    }
    Number exponent;
    if (e < text.size()) {
        std::string_view written = text.substr(e + 1);
        const bool negative = !written.empty() && written[0] == '-';
        if (!written.empty() && (negative || written[0] == '+'))
            written.remove_prefix(1);
        exponent = Number::ofDigits(written, negative);
    }
    RealNumber real;
    real.mantissa = Number::ofDigits(digits, r.value().negative);
    if (takeExponent(r, exponent, shift, real.exponent))
        keepReal(r, std::move(real));
}

/* {mantissa 314, base 10, exponent -2}; in 1988 without the names. */
void readParts(Reading &r) {
    constexpr std::string_view names[] = {"mantissa", "base", "exponent"};
    ParseContext parsing = r.c.parsing();
    const auto parts = readNamedValues(parsing, r.value().tokens);
    if (parts.empty() && !r.value().tokens.empty())
        return;
    Number numbers[3];
    bool sound = parts.size() == 3;
    for (std::size_t i = 0; sound && i < 3; ++i) {
        sound = !parts[i].name.given() || parts[i].name.text == names[i];
        if (!sound)
            break;
        const auto number = integerOf(r.c, {parts[i].value, r.use.scope});
        if (!number)
            return;
        numbers[i] = *number;
    }
    const bool two = numbers[1] == Number::of(2);
    if (!sound || (!two && !(numbers[1] == Number::of(10)))) {
        error(r.c.diagnostics, r.value().place,
              "a REAL in braces is {mantissa m, base 2 or 10, exponent e}");
        return;
    }
    RealNumber real;
    real.mantissa = numbers[0];
    real.base = two ? 2 : 10;
    if (takeExponent(r, numbers[2], 0, real.exponent))
        keepReal(r, std::move(real));
}

} // namespace

void readReal(Reading &r) {
    switch (r.value().kind) {
    case ValueKind::PlusInfinity:
        return keepSpecial(r, RealNumber::PlusInfinity);
    case ValueKind::MinusInfinity:
        return keepSpecial(r, RealNumber::MinusInfinity);
    case ValueKind::NotANumber:
        return keepSpecial(r, RealNumber::NotANumber);
    case ValueKind::Number:
    case ValueKind::Real:
        return readDecimal(r);
    case ValueKind::Braced:
        return readParts(r);
    default:
        return reportMismatch(r, "a number, a number in three parts in braces, or an infinity");
    }
}

} // namespace asntree
