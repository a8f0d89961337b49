#include "options/naming.h"

#include <cstring>

#include "options/checkers.h"
#include "options/ketracnf.h"

/* An option selects the first row that fits, so a two-letter prefix stands before its first letter,
   and the row of named numbers is never selected: it gives the prefix of what is written on them.
 */
const NameOptPref nameOptPref[] = {
    {"VS", 2, KIND_VALUE_SET}, {"OS", 2, KIND_OBJECT_SET}, {"CL", 2, KIND_CLASS},
    {"T", 1, KIND_TYPE},       {"V", 1, KIND_VALUE},       {"O", 1, KIND_OBJECT},
    {"C", 1, KIND_COMPONENT},  {"F", 1, KIND_FIELD},       {"V", 1, KIND_NAMED_NUMBER},
    {nullptr, 0, 0},
};

namespace {

/* The conversion letters' word; the others (names, prefixes, suffixes) take plain text. */
constexpr char CONVERSION_LETTER = 'C';

/* The end of a name: "_" is what "-" is in a tree, so it may be written either way. */
const char *skipNameChars(const char *text) {
    while (isSymbolChar(*text))
        ++text;
    return text;
}

bool isEntryOption(const char *option) {
    return isOptionStri(option, "ENTRY") != nullptr;
}

/* Names of types, classes and sets begin in upper case, those of values, objects and components in
   lower case. A class field may be either. */
bool isFirstCharOK(char c, int kind) {
    switch (kind) {
    case KIND_TYPE:
    case KIND_CLASS:
    case KIND_VALUE_SET:
    case KIND_OBJECT_SET:
        return isAsciiUpper(c);
    case KIND_FIELD:
        return true;
    default:
        return isAsciiLower(c);
    }
}

/* An optional H and an optional L or U, in any case. */
bool isConversion(const char *text) {
    if (*text == 'H' || *text == 'h')
        ++text;
    if (*text != '\0' && std::strchr("LlUu", *text) != nullptr)
        ++text;
    return *text == '\0';
}

Text foldName(std::string_view name) {
    return convertHyphens(Text(name));
}

FixRec *appendFixRec(FixChain *fix, std::string_view name) {
    FixRec *record = fix->records.emplace_back(std::make_unique<FixRec>()).get();
    record->id = name.data();
    record->idLen = static_cast<std::int32_t>(name.size());
    fix->byText.emplace(name, record);
    fix->byName.emplace(foldName(name), record);
    return record;
}

} // namespace

bool isNamingOption(const char *text, const NameOptPref **row) {
    for (const NameOptPref *pref = nameOptPref; pref->prefix != nullptr; ++pref) {
        const char *word = isOptionStri(text, pref->prefix);
        if (word == nullptr)
            continue;
        for (const char *name : {"CONV=", "PREF=", "NAME=", "SUFF="}) {
            if (isOptionStri(word, name) == nullptr)
                continue;
            if (row != nullptr)
                *row = pref;
            return true;
        }
    }
    return false;
}

FixChain *fixRecForKind(GlobalOptions *options, int kind) {
    if (kind == KIND_NAMED_NUMBER)
        kind = KIND_VALUE;
    if (kind < KIND_TYPE || kind > FIX_KINDS)
        return nullptr;
    return &options->fix[static_cast<std::size_t>(kind - KIND_TYPE)];
}

FixOptionParts splitFixOptionIntoParts(const FixChain *fix, const char *value) {
    FixOptionParts parts;
    parts.rest = value;
    if (fix == nullptr || std::strchr(value, ':') == nullptr)
        return parts;
    const char *end = skipNameChars(value);
    parts.typeName = value;
    parts.typeNameLen = static_cast<std::int32_t>(end - value);
    parts.rest = *end == ':' ? end + 1 : end;
    return parts;
}

bool getFixOpt(FixChain *fix, const char *option, const char *value) {
    const FixOptionParts parts = splitFixOptionIntoParts(fix, value);
    const bool isEntry = isEntryOption(option);
    const char *category = nullptr;
    const char *symbol = nullptr;
    const char *word = nullptr;
    if (isEntry ? !parseEntryOption(parts.rest, &category, &symbol)
                : !parseNamingOption(option, &word))
        return false;
    if (fix == nullptr)
        return true;

    FixRec *record = &fix->head;
    if (parts.typeName != nullptr && *parts.typeName != ':') {
        record = findFixRecByEntryTypeName(fix, parts.typeName);
        record->id = parts.typeName;
        record->idLen = parts.typeNameLen;
    }
    if (isEntry)
        updateEntryOption(record, category, symbol);
    else
        updateNamingOption(record, word, parts.rest);
    return true;
}

bool parseEntryOption(const char *text, const char **category, const char **symbol) {
    *category = text;
    if (isAsciiDigit(*text)) {
        while (*text >= '0' && *text <= '7')
            ++text;
    } else if (strnCaseComp(text, "SDU", 3) == 0 || strnCaseComp(text, "PDU", 3) == 0) {
        text += 3;
    }
    if (*text != ':') {
        *symbol = text;
        return *text == '\0';
    }
    *symbol = text + 1;
    return *skipNameChars(*symbol) == '\0';
}

bool parseNamingOption(const char *option, const char **word) {
    const NameOptPref *row = nullptr;
    if (!isNamingOption(option, &row))
        return false;
    *word = option + row->length;
    const char *value = std::strchr(*word, '=') + 1;
    if (const char *colon = std::strchr(value, ':')) {
        /* Nothing in front of the ":" means all names, as no ":" does. */
        if (value != colon && !isFirstCharOK(*value, row->kind))
            return false;
        if (skipNameChars(value) != colon)
            return false;
        value = colon + 1;
    }
    if (**word == CONVERSION_LETTER)
        return isConversion(value);
    return *skipNameChars(value) == '\0';
}

void updateEntryOption(FixRec *fix, const char *category, const char *symbol) {
    fix->conv = category;
    fix->pref = symbol == nullptr || *symbol == '\0' ? nullptr : symbol;
}

void updateNamingOption(FixRec *fix, const char *word, const char *value) {
    switch (*word) {
    case 'C':
        fix->conv = value;
        break;
    case 'N':
        fix->name = value;
        break;
    case 'P':
        fix->pref = value;
        break;
    case 'S':
        fix->suff = value;
        break;
    default:
        break;
    }
}

FixRec *findFixRecByEntryTypeName(FixChain *fix, const char *name) {
    const std::string_view key(name, static_cast<std::size_t>(skipNameChars(name) - name));
    const auto found = fix->byText.find(key);
    return found != fix->byText.end() ? found->second : appendFixRec(fix, key);
}

FixRec *findGlbFixRecByName(const FixChain &fix, const char *name) {
    if (fix.records.empty())
        return nullptr;
    const auto found = fix.byName.find(foldName(name));
    return found != fix.byName.end() ? found->second : nullptr;
}
