#include "asntree/words.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "options/checkers.h"
#include "store/ketradef.h"

namespace asntree {

namespace {

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool sameWord(std::string_view a, const char *b) {
    return strCaseComp(std::string(a).c_str(), b) == 0;
}

bool readNumber(std::string_view text, std::uint32_t &number) {
    constexpr std::uint32_t GREATEST = 2147483647;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end && number > 0 && number <= GREATEST;
}

bool isSymbol(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isSymbolChar);
}

/* Each takes the value of its word ("" without one). The result is null, or what the value has to
   be. */

const char *takeEntry(Words &words, std::string_view value) {
    if (value.empty())
        words.entryCategories = 1;
    return value.empty() || readCategories(value, words.entryCategories)
               ? nullptr
               : "PDU, SDU or digits from 0 to 7";
}

const char *takeInt(Words &words, std::string_view value) {
    words.intForm = VF_NONE;
    if (sameWord(value, "octets"))
        return nullptr;
    if (value.size() > 1 && (value[0] == 'i' || value[0] == 'I') && isAsciiDigit(value[1]))
        value.remove_prefix(1);
    const std::string text(value);
    return intSizeOptionOK(&words.intForm, text.c_str(), true) && words.intForm != VF_NONE
               ? nullptr
               : "8, 16, 32, 64, u8, u16, u32, u64, i8, i16, i32, i64 or octets";
}

const char *takeReal(Words &words, std::string_view value) {
    words.realForm = value == "32" ? VF_REAL32 : VF_REAL64;
    return value == "32" || value == "64" ? nullptr : "32 or 64";
}

const char *takeArray(Words &words, std::string_view value) {
    words.list = ListWord::Array;
    return value.empty() || readNumber(value, words.arrayLimit) ? nullptr : "a number from 1 on";
}

const char *takeList(Words &words, std::string_view) {
    words.list = ListWord::List;
    return nullptr;
}

const char *takeDynArray(Words &words, std::string_view) {
    words.list = ListWord::DynArray;
    return nullptr;
}

const char *takeStatic(Words &words, std::string_view value) {
    words.isStatic = true;
    return value.empty() || readNumber(value, words.staticLimit) ? nullptr : "a number from 1 on";
}

const char *takeDynamic(Words &words, std::string_view) {
    words.isStatic = false;
    return nullptr;
}

const char *takeLimit(Words &words, std::string_view value) {
    const std::size_t colon = std::min(value.find(':'), value.size());
    const std::string_view mode = value.substr(std::min(colon + 1, value.size()));
    words.limitIsError = !sameWord(mode, "ignore");
    const bool modeOk = colon == value.size() || sameWord(mode, "error") || !words.limitIsError;
    return readNumber(value.substr(0, colon), words.limit) && modeOk
               ? nullptr
               : "a number, with \":error\" or \":ignore\" behind it or without";
}

const char *takeFlag(Words &, std::string_view) {
    return nullptr;
}

const char *takeSkip(Words &words, std::string_view value) {
    words.skipCalls = sameWord(value, "call");
    return value.empty() || words.skipCalls || sameWord(value, "ignore") ? nullptr
                                                                         : "ignore or call";
}

const char *takeDefinite(Words &words, std::string_view) {
    words.definite = true;
    return nullptr;
}

const char *takeIndefinite(Words &words, std::string_view) {
    words.definite = false;
    return nullptr;
}

const char *takeSave(Words &words, std::string_view) {
    words.saveExtensions = true;
    return nullptr;
}

const char *takeDrop(Words &words, std::string_view) {
    words.saveExtensions = false;
    return nullptr;
}

const char *takeName(Words &words, std::string_view value) {
    words.name = value;
    return !value.empty() && isSymbol(value) && isAsciiAlpha(value[0])
               ? nullptr
               : "a letter and then letters, digits, \"-\" and \"_\"";
}

constexpr const char *SYMBOL_NEEDED = "letters, digits, \"-\" and \"_\"";

const char *takePrefix(Words &words, std::string_view value) {
    words.prefix = value;
    return isSymbol(value) ? nullptr : SYMBOL_NEEDED;
}

const char *takeSuffix(Words &words, std::string_view value) {
    words.suffix = value;
    return isSymbol(value) ? nullptr : SYMBOL_NEEDED;
}

const char *takeConv(Words &words, std::string_view value) {
    words.conv = value;
    for (const char *good : {"", "H", "L", "U", "HL", "HU"})
        if (sameWord(value, good))
            return nullptr;
    return "H, L, U, HL or HU";
}

const char *takeAccess(Words &words, std::string_view value) {
    words.accessMacros = sameWord(value, "MACROS");
    return words.accessMacros || sameWord(value, "NONE") ? nullptr : "NONE or MACROS";
}

const char *takeAny(Words &words, std::string_view value) {
    const std::size_t colon = value.find(':');
    if (colon == value.npos || colon == 0 || colon + 1 == value.size())
        return "a value, \":\" and a type";
    words.any.emplace_back(value.substr(0, colon), value.substr(colon + 1));
    return nullptr;
}

const char *takeEmbed(Words &words, std::string_view value) {
    const std::string place = strUpper(std::string(value.substr(0, 2)));
    constexpr std::string_view letters = "TEDAP";
    if (value.size() < 3 || value[2] != ':' || letters.find(place[0]) == letters.npos ||
        (place[1] != '1' && place[1] != '2'))
        return "a place (T, E, D, A or P with 1 or 2 behind it), \":\" and a text";
    words.embed.emplace_back(place, value.substr(3));
    return nullptr;
}

const char *takeComment(Words &words, std::string_view value) {
    words.comments.emplace_back(value);
    return nullptr;
}

enum class ValueRule : std::uint8_t { None, Optional, Needed };

struct WordRow {
    std::string_view name;
    WordKind kind;
    ValueRule value;
    const char *(*take)(Words &words, std::string_view value);
};

constexpr WordRow wordTable[] = {
    {"entry", WordKind::Entry, ValueRule::Optional, takeEntry},
    {"int", WordKind::Int, ValueRule::Needed, takeInt},
    {"real", WordKind::Real, ValueRule::Needed, takeReal},
    {"array", WordKind::List, ValueRule::Optional, takeArray},
    {"list", WordKind::List, ValueRule::None, takeList},
    {"dynarray", WordKind::List, ValueRule::None, takeDynArray},
    {"static", WordKind::String, ValueRule::Optional, takeStatic},
    {"dynamic", WordKind::String, ValueRule::None, takeDynamic},
    {"limit", WordKind::Limit, ValueRule::Needed, takeLimit},
    {"pointer", WordKind::Pointer, ValueRule::None, takeFlag},
    {"near", WordKind::Near, ValueRule::None, takeFlag},
    {"home", WordKind::Home, ValueRule::None, takeFlag},
    {"skip", WordKind::Skip, ValueRule::Optional, takeSkip},
    {"definite", WordKind::Length, ValueRule::None, takeDefinite},
    {"indefinite", WordKind::Length, ValueRule::None, takeIndefinite},
    {"frame", WordKind::Frame, ValueRule::None, takeFlag},
    {"save", WordKind::Extensions, ValueRule::None, takeSave},
    {"drop", WordKind::Extensions, ValueRule::None, takeDrop},
    {"name", WordKind::Name, ValueRule::Needed, takeName},
    {"prefix", WordKind::Prefix, ValueRule::Needed, takePrefix},
    {"suffix", WordKind::Suffix, ValueRule::Needed, takeSuffix},
    {"conv", WordKind::Conv, ValueRule::Needed, takeConv},
    {"access", WordKind::Access, ValueRule::Needed, takeAccess},
    {"any", WordKind::Any, ValueRule::Needed, takeAny},
    {"embed", WordKind::Embed, ValueRule::Needed, takeEmbed},
    {"comment", WordKind::Comment, ValueRule::Needed, takeComment},
};

/* A word as it stands in the text. */
struct ReadWord {
    std::string name; /* in small letters */
    std::string value;
    bool hasValue = false;
    bool open = false; /* a double quote has no second one */
};

/* The word at `at`, which moves behind it. */
ReadWord nextWord(std::string_view text, std::size_t &at) {
    ReadWord word;
    for (bool quoted = false; at < text.size() && (quoted || !isBlank(text[at])); ++at) {
        const char c = text[at];
        if (c == '"' && quoted && at + 1 < text.size() && text[at + 1] == '"') {
            ++at;
        } else if (c == '"') {
            word.open = quoted = !quoted;
            continue;
        } else if (c == '=' && !word.hasValue) {
            word.hasValue = true;
            continue;
        }
        (word.hasValue ? word.value : word.name) += c;
    }
    for (char &c : word.name)
        c = isAsciiUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
    return word;
}

const WordRow *findRow(std::string_view name) {
    const auto *found = std::find_if(std::begin(wordTable), std::end(wordTable),
                                     [name](const WordRow &row) { return row.name == name; });
    return found == std::end(wordTable) ? nullptr : found;
}

std::string unknownWord(const std::string &name) {
    std::vector<std::string_view> names;
    for (const WordRow &row : wordTable)
        names.push_back(row.name);
    const std::string_view nearest = nearestName(name, names);
    std::string text = "a directive has no word \"" + name + "\"";
    if (!nearest.empty())
        text += "; did you mean \"" + std::string(nearest) + "\"?";
    return text;
}

/* The word that contradicts one of this kind and text, or null. `same`: it was said before. */
const GivenWord *contradiction(const Words &words, WordKind kind, const std::string &text,
                               bool &same) {
    const bool repeats = kind == WordKind::Embed || kind == WordKind::Comment;
    for (const GivenWord &given : words.given) {
        if (given.kind != kind || repeats)
            continue;
        same = same || given.text == text;
        const bool otherValue =
            kind != WordKind::Any ||
            given.text.substr(0, given.text.find(':') + 1) == text.substr(0, text.find(':') + 1);
        if (given.text != text && otherValue)
            return &given;
    }
    return nullptr;
}

bool addWord(const ReadWord &word, Place place, Diagnostics &diagnostics, Words &words) {
    const auto wrong = [&](std::string text) {
        error(diagnostics, place, std::move(text));
        return false;
    };
    if (word.open)
        return wrong("a double quote of this word has no second one");
    const WordRow *row = findRow(word.name);
    if (row == nullptr)
        return wrong(unknownWord(word.name));
    if (word.hasValue && row->value == ValueRule::None)
        return wrong("the word \"" + word.name + "\" takes no value");
    if (!word.hasValue && row->value == ValueRule::Needed)
        return wrong("the word \"" + word.name + "\" needs a value: " + word.name + "=...");
    const std::string text = word.hasValue ? word.name + '=' + word.value : word.name;
    bool same = false;
    if (const GivenWord *other = contradiction(words, row->kind, text, same)) {
        error(diagnostics, place, "\"" + text + "\" contradicts \"" + other->text + "\"",
              {{other->place, "which is given here"}});
        return false;
    }
    if (same)
        return true;
    if (word.hasValue && word.value.empty() && row->value == ValueRule::Optional)
        return wrong("a value is missing behind \"" + text + "\"");
    if (const char *needed = row->take(words, word.value))
        return wrong("the value of \"" + word.name + "\" must be " + needed + ", not \"" +
                     word.value + "\"");
    words.given.push_back({row->kind, place, text});
    return true;
}

bool isStepChar(char c) {
    return isAsciiAlnum(c) || c == '-' || c == '_';
}

/* Steps from `length` on, up to a blank or the end. */
bool readSteps(std::string_view text, std::vector<std::string> &steps, std::size_t &length) {
    for (;;) {
        std::size_t begin = length;
        if (text.substr(length, 1) == "*") {
            ++length;
        } else {
            if (text.substr(length, 1) == "&")
                begin = ++length;
            if (length == text.size() || !isAsciiAlpha(text[length]))
                return false;
            while (length < text.size() && isStepChar(text[length]))
                ++length;
        }
        steps.emplace_back(text.substr(begin, length - begin));
        if (length == text.size() || isBlank(text[length]))
            return true;
        if (text[length] != '.')
            return false;
        ++length;
    }
}

} // namespace

const GivenWord *Words::find(WordKind kind) const {
    const auto found = std::find_if(given.begin(), given.end(),
                                    [kind](const GivenWord &word) { return word.kind == kind; });
    return found == given.end() ? nullptr : &*found;
}

bool readWords(std::string_view text, Place place, Diagnostics &diagnostics, Words &words) {
    bool good = true;
    for (std::size_t at = 0;;) {
        while (at < text.size() && isBlank(text[at]))
            ++at;
        if (at == text.size())
            return good;
        Place where = place;
        where.offset += static_cast<std::uint32_t>(at);
        good = addWord(nextWord(text, at), where, diagnostics, words) && good;
    }
}

bool readItemPath(std::string_view text, std::vector<std::string> &steps, std::size_t &length) {
    length = 0;
    if (!text.starts_with('.') && !text.starts_with('*'))
        return true;
    length = text.starts_with('.') ? 1 : 0;
    return readSteps(text, steps, length);
}

bool readModulePath(std::string_view text, std::vector<std::string> &steps, std::size_t &length) {
    length = 0;
    return readSteps(text, steps, length) && steps.size() >= 2 && steps[0] != "*" &&
           steps[1] != "*";
}

bool readCategories(std::string_view text, std::uint8_t &categories) {
    if (sameWord(text, "PDU") || sameWord(text, "SDU")) {
        categories = sameWord(text, "PDU") ? 1 : 2;
        return true;
    }
    return !text.empty() && bitVector8OptionOK(&categories, std::string(text).c_str());
}

} // namespace asntree
