#include "options/checkers.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "options/cmdline.h"
#include "store/ketradef.h"

namespace {

constexpr OptionWord booleWords[] = {
    {1, "YES"}, {1, "TRUE"}, {0, "NO"}, {0, "FALSE"}, {0, nullptr}};
constexpr OptionWord realSizes[] = {
    {VF_NONE, "0"}, {VF_REAL32, "32"}, {VF_REAL64, "64"}, {VF_REAL128, "128"}, {0, nullptr}};
constexpr OptionWord intSizes[] = {
    {VF_I8, "8"}, {VF_I16, "16"}, {VF_I32, "32"}, {VF_I64, "64"}, {0, nullptr}};
constexpr OptionWord unsignedSizes[] = {
    {VF_UI8, "8"}, {VF_UI16, "16"}, {VF_UI32, "32"}, {VF_UI64, "64"}, {0, nullptr}};

template <typename T> bool store(T *dst, const T &value) {
    if (dst != nullptr)
        *dst = value;
    return true;
}

bool findWord(std::uint8_t *dst, const char *text, const OptionWord *words) {
    for (; words->word != nullptr; ++words)
        if (strCaseComp(text, words->word) == 0)
            return store(dst, words->value);
    return false;
}

/* The whole text as a number without a leading zero. */
bool parseNumber(std::string_view text, std::int32_t *number) {
    if (text.empty() || !isAsciiDigit(text[0]) || (text[0] == '0' && text.size() > 1))
        return false;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, *number);
    return result.ec == std::errc() && result.ptr == end;
}

/* Digits from `*text` on that make a number up to `max`; `*text` moves behind them. */
bool skipNumber(const char **text, std::int64_t max) {
    const char *start = *text;
    std::int64_t number = 0;
    for (; isAsciiDigit(**text); ++*text) {
        number = number * 10 + (**text - '0');
        if (number > max)
            return false;
    }
    return *text != start;
}

bool skipText(const char **text, const char *expected) {
    const char *behind = isOptionStri(*text, expected);
    if (behind == nullptr)
        return false;
    *text = behind;
    return true;
}

} // namespace

bool booleOptionOK(std::uint8_t *dst, const char *text) {
    return byteOptionOK(dst, text, 0, 1, booleWords);
}

bool byteOptionOK(std::uint8_t *dst, const char *text, int min, int max, const OptionWord *words) {
    constexpr std::size_t MAX_DIGITS = 3;
    if (!isAsciiDigit(text[0]))
        return words != nullptr && findWord(dst, text, words);
    std::int32_t number = 0;
    if (std::strlen(text) > MAX_DIGITS || !parseNumber(text, &number))
        return false;
    if (number < min || number > max)
        return false;
    return store(dst, static_cast<std::uint8_t>(number));
}

bool int32OptionOK(std::int32_t *dst, const char *text, std::int32_t min, std::int32_t max) {
    std::int32_t number = 0;
    if (!parseNumber(text, &number) || number < min || number > max)
        return false;
    return store(dst, number);
}

bool intSizeOptionOK(std::uint8_t *dst, const char *text, bool unsignedAllowed) {
    if (std::strcmp(text, "0") == 0 || strCaseComp(text, "OPTIMIZE") == 0)
        return store<std::uint8_t>(dst, VF_NONE);
    if (unsignedAllowed && (text[0] == 'U' || text[0] == 'u'))
        return findWord(dst, text + 1, unsignedSizes);
    return findWord(dst, text, intSizes);
}

bool realSizeOptionOK(std::uint8_t *dst, const char *text) {
    return findWord(dst, text, realSizes);
}

bool bitVector8OptionOK(std::uint8_t *dst, const char *text) {
    unsigned bits = 0;
    for (; *text >= '0' && *text <= '7'; ++text)
        bits |= 1u << (*text - '0');
    return *text == '\0' && store(dst, static_cast<std::uint8_t>(bits));
}

bool directoryOptionOK(Text *dst, const char *text) {
    if (text[0] == '\0' || findNonPrint(text, true) != nullptr)
        return false;
    Text directory(text);
    if (directory.back() != '/')
        directory += '/';
    return store(dst, directory);
}

bool realLimOptionOK(const char *text) {
    constexpr std::int64_t MAX_MANTISSA = 2147483647;
    constexpr std::int64_t MAX_EXPONENT = 32767;
    return skipText(&text, "{") && skipNumber(&text, MAX_MANTISSA) && skipText(&text, ",10,") &&
           skipNumber(&text, MAX_EXPONENT) && skipText(&text, "}") && *text == '\0';
}

bool alnumSpecialStriOptionOK(Text *dst, const char *text, const char *specials, std::size_t min,
                              std::size_t max) {
    const std::string_view all = text;
    const auto allowed = [specials](char c) {
        return isAsciiAlnum(c) || std::strchr(specials, c) != nullptr;
    };
    return all.size() >= min && all.size() <= max && std::all_of(all.begin(), all.end(), allowed) &&
           store(dst, Text(all));
}
