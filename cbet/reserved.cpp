#include "cbet/names.h"

#include <unordered_set>

NameHooks nameHooks;

namespace {

using WordSet = std::unordered_set<std::string_view>;

const WordSet keywords = {
    "auto",    "break",  "case",     "char",   "const",    "continue", "default",
    "do",      "double", "else",     "enum",   "extern",   "float",    "for",
    "goto",    "if",     "inline",   "int",    "long",     "register", "restrict",
    "return",  "short",  "signed",   "sizeof", "static",   "struct",   "switch",
    "typedef", "union",  "unsigned", "void",   "volatile", "while",
};

/* What C++ has more, and the numbers of the run-time layer: names that a member can have in C alone. */
const WordSet cPlusPlusKeywords = {
    "alignas",
    "alignof",
    "and",
    "and_eq",
    "asm",
    "bitand",
    "bitor",
    "bool",
    "catch",
    "char16_t",
    "char32_t",
    "char8_t",
    "class",
    "co_await",
    "co_return",
    "co_yield",
    "compl",
    "concept",
    "const_cast",
    "consteval",
    "constexpr",
    "constinit",
    "decltype",
    "delete",
    "dynamic_cast",
    "explicit",
    "export",
    "false",
    "friend",
    "mutable",
    "namespace",
    "new",
    "noexcept",
    "not",
    "not_eq",
    "nullptr",
    "operator",
    "or",
    "or_eq",
    "private",
    "protected",
    "public",
    "reinterpret_cast",
    "requires",
    "sint16",
    "sint32",
    "sint64",
    "sint8",
    "static_assert",
    "static_cast",
    "template",
    "this",
    "thread_local",
    "throw",
    "true",
    "try",
    "typeid",
    "typename",
    "uint16",
    "uint32",
    "uint64",
    "uint8",
    "using",
    "virtual",
    "wchar_t",
    "xor",
    "xor_eq",
};

} // namespace

bool cIsReservedWord(std::string_view word, bool cPlusPlus) {
    return keywords.contains(word) || (cPlusPlus && cPlusPlusKeywords.contains(word));
}

/* An option of the tool, which stands in a room below. */
bool cAvoidsCPlusPlusWords(AsnModule *module) {
    return nameHooks.avoidsCPlusPlusWords != nullptr && nameHooks.avoidsCPlusPlusWords(module);
}

/* int_ for a member that is called int */
Text cLoneName(std::string_view name, AsnModule *module) {
    Text lone(name);
    if (cIsReservedWord(name, cAvoidsCPlusPlusWords(module)))
        lone += '_';
    return lone;
}
