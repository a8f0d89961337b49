#include "cbet/reserved.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

/* In ascending order. */
constexpr std::string_view keywords[] = {
    "auto",    "break",  "case",     "char",   "const",    "continue", "default",
    "do",      "double", "else",     "enum",   "extern",   "float",    "for",
    "goto",    "if",     "inline",   "int",    "long",     "register", "restrict",
    "return",  "short",  "signed",   "sizeof", "static",   "struct",   "switch",
    "typedef", "union",  "unsigned", "void",   "volatile", "while",
};
static_assert(std::is_sorted(std::begin(keywords), std::end(keywords)));

} // namespace

bool cIsReservedWord(const char *name) {
    constexpr std::size_t LONGEST = 8; /* Asked again and again of each name, so most end here. */
    const std::string_view word(name);
    return word.size() <= LONGEST &&
           std::binary_search(std::begin(keywords), std::end(keywords), word);
}
