#include "asntree/octets.h"

#include <algorithm>
#include <cstdint>

namespace asntree {

std::string hexDigits(std::string_view octets) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char octet : octets) {
        text.push_back(digits[(static_cast<unsigned char>(octet) >> 4) & 0xF]);
        text.push_back(digits[static_cast<unsigned char>(octet) & 0xF]);
    }
    return text;
}

std::string binaryDigits(std::string_view hexadecimal) {
    std::string bits;
    bits.reserve(hexadecimal.size() * 4);
    for (const char digit : hexadecimal) {
        const int number = digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10;
        for (int bit = 3; bit >= 0; --bit)
            bits += (number >> bit & 1) != 0 ? '1' : '0';
    }
    return bits;
}

namespace {

/* Digits of a number without a sign to the base 2 ** `bits`, highest first; at least one. */
std::string digitsToBase(std::string decimal, unsigned bits) {
    std::string digits;
    do {
        unsigned rest = 0;
        std::string quotient;
        for (const char digit : decimal) {
            rest = rest * 10 + static_cast<unsigned>(digit - '0');
            if (const unsigned part = rest >> bits; part != 0 || !quotient.empty())
                quotient.push_back(static_cast<char>('0' + part));
            rest &= (1u << bits) - 1;
        }
        digits.push_back(static_cast<char>(rest));
        decimal = std::move(quotient);
    } while (!decimal.empty());
    std::reverse(digits.begin(), digits.end());
    return digits;
}

} // namespace

std::string contentOfInteger(const Number &number) {
    std::string octets = digitsToBase(number.digits, 8);
    if (number.negative) {
        bool carry = true;
        for (auto octet = octets.rbegin(); octet != octets.rend(); ++octet) {
            const unsigned inverse = (~static_cast<unsigned>(static_cast<unsigned char>(*octet)) &
                                      0xFF) + (carry ? 1 : 0);
            carry = inverse > 0xFF;
            *octet = static_cast<char>(inverse & 0xFF);
        }
    }
    const bool looksNegative = (static_cast<unsigned char>(octets.front()) & 0x80) != 0;
    if (looksNegative != number.negative)
        octets.insert(octets.begin(), number.negative ? '\xFF' : '\0');
    return octets;
}

std::string contentOfArcs(std::span<const Number> arcs) {
    std::string octets;
    for (const Number &arc : arcs) {
        std::string digits = digitsToBase(arc.digits, 7);
        for (std::size_t i = 0; i + 1 < digits.size(); ++i)
            digits[i] = static_cast<char>(digits[i] | '\x80');
        octets += digits;
    }
    return octets;
}

std::string utf8Of(std::u32string_view characters) {
    std::string text;
    const auto put = [&](std::uint32_t octet) { text.push_back(static_cast<char>(octet)); };
    for (const std::uint32_t character : characters) {
        if (character < 0x80) {
            put(character);
            continue;
        }
        const int more = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
        put((0xFF00u >> (more + 1) & 0xFF) | character >> (6 * more));
        for (int shift = 6 * (more - 1); shift >= 0; shift -= 6)
            put(0x80 | (character >> shift & 0x3F));
    }
    return text;
}

} // namespace asntree
