#include "asntree/naming.h"

#include <algorithm>

namespace asntree {

namespace {

/* Longer words first: "VS" before "V". The numbers are indices in NamingRules::kinds. */
struct Row {
    std::string_view word;
    DefinitionKind kind;
    std::size_t number;
};
constexpr Row rows[] = {
    {"VS", DefinitionKind::ValueSet, 0}, {"OS", DefinitionKind::ObjectSet, 1},
    {"CL", DefinitionKind::Class, 2},    {"T", DefinitionKind::Type, 3},
    {"V", DefinitionKind::Value, 4},     {"O", DefinitionKind::Object, 5},
};

constexpr std::string_view parts[] = {"PREF=", "NAME=", "SUFF=", "CONV="};

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

/* The row and the part of a naming option without its "-"; null for any other text. */
const Row *rowOf(std::string_view option, std::size_t &part) {
    for (const Row &row : rows)
        if (startsWith(option, row.word))
            for (part = 0; part < std::size(parts); ++part)
                if (startsWith(option.substr(row.word.size()), parts[part]))
                    return &row;
    return nullptr;
}

const Row *rowOf(DefinitionKind kind) {
    for (const Row &row : rows)
        if (row.kind == kind)
            return &row;
    return nullptr;
}

std::string withUnderscores(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '-', '_');
    return text;
}

/* The rule for one name, made if there is none; the rule for all names if it is empty. */
NamingRules::Rule &ruleFor(NamingRules::Kind &kind, std::string_view id) {
    if (id.empty())
        return kind.rules.front();
    auto [place, isNew] = kind.byText.emplace(id, kind.rules.size());
    if (isNew) {
        kind.byName.emplace(withUnderscores(id), kind.rules.size());
        kind.rules.emplace_back();
    }
    return kind.rules[place->second];
}

void set(Naming &naming, std::size_t part, std::string_view value) {
    std::string *const members[] = {&naming.pref, &naming.name, &naming.suff, &naming.conv};
    *members[part] = value;
}

void apply(Naming &naming, const NamingRules::Rule &rule) {
    const std::optional<std::string> *const members[] = {&rule.pref, &rule.name, &rule.suff,
                                                         &rule.conv};
    for (std::size_t part = 0; part < std::size(parts); ++part)
        if (*members[part])
            set(naming, part, **members[part]);
}

} // namespace

NamingRules::NamingRules() {
    for (Kind &kind : kinds)
        kind.rules.emplace_back();
}

void addNamingOption(NamingRules &rules, std::string_view option) {
    if (!startsWith(option, "-"))
        return;
    const std::string_view text = option.substr(1);
    std::size_t part = 0;
    const Row *row = rowOf(text, part);
    if (row == nullptr)
        return;
    std::string_view value = text.substr(row->word.size() + parts[part].size());
    const std::size_t colon = value.find(':');
    NamingRules::Rule &rule =
        ruleFor(rules.kinds[row->number], colon == value.npos ? "" : value.substr(0, colon));
    value.remove_prefix(colon == value.npos ? 0 : colon + 1);
    std::optional<std::string> *const members[] = {&rule.pref, &rule.name, &rule.suff, &rule.conv};
    *members[part] = std::string(value);
}

std::string_view namingPrefix(DefinitionKind kind) {
    const Row *row = rowOf(kind);
    return row == nullptr ? std::string_view() : row->word;
}

Naming namingOf(const NamingRules &rules, DefinitionKind kind, std::string_view name,
                const std::vector<std::string> &overrides) {
    Naming naming;
    const Row *row = rowOf(kind);
    const NamingRules::Kind &rulesOfKind = rules.kinds[row->number];
    apply(naming, rulesOfKind.rules.front());
    if (!rulesOfKind.byName.empty())
        if (auto found = rulesOfKind.byName.find(withUnderscores(name));
            found != rulesOfKind.byName.end())
            apply(naming, rulesOfKind.rules[found->second]);
    for (const std::string &text : overrides) {
        const std::string_view behind = std::string_view(text).substr(text.empty() ? 0 : 1);
        if (!startsWith(behind, row->word))
            continue;
        for (std::size_t part = 0; part < std::size(parts); ++part)
            if (startsWith(behind.substr(row->word.size()), parts[part]))
                set(naming, part, behind.substr(row->word.size() + parts[part].size()));
    }
    return naming;
}

std::string nameInC(const Naming &naming, std::string_view name, std::size_t nameLength) {
    const std::string_view body =
        std::string_view(naming.name.empty() ? name : std::string_view(naming.name))
            .substr(0, nameLength);
    std::string_view letters = naming.conv;
    const bool hyphenate = !letters.empty() && (letters[0] == 'H' || letters[0] == 'h');
    letters.remove_prefix(hyphenate ? 1 : 0);
    const bool toLower = !letters.empty() && (letters[0] == 'L' || letters[0] == 'l');
    const bool toUpper = !letters.empty() && (letters[0] == 'U' || letters[0] == 'u');
    std::string text;
    char before = 0;
    for (const std::string_view part :
         {std::string_view(naming.pref), body, std::string_view(naming.suff)})
        for (char ch : part) {
            const bool isUpper = ch >= 'A' && ch <= 'Z';
            const bool isLower = ch >= 'a' && ch <= 'z';
            if (isUpper && hyphenate &&
                ((before >= 'a' && before <= 'z') || (before >= '0' && before <= '9')))
                text += '_';
            if (isUpper && toLower)
                text += static_cast<char>(ch - 'A' + 'a');
            else if (isLower && toUpper)
                text += static_cast<char>(ch - 'a' + 'A');
            else
                text += ch == '-' ? '_' : ch;
            before = ch;
        }
    return text;
}

} // namespace asntree
