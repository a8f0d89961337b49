#include <algorithm>

#include "asntree/parsing.h"

/* Objects between their braces: by default syntax, or by the WITH SYNTAX of their class. */

namespace asntree {

namespace {

/* What follows a piece of syntax: the rest of its group, then that of the group around it. */
struct Follow {
    const std::vector<SyntaxItem> *items = nullptr;
    std::size_t next = 0;
    const Follow *outer = nullptr;
};

struct ObjectReader {
    Parser p;
    const ObjectClass &objectClass;
    SettingKinds kinds;
    std::vector<FieldSetting> settings;
    std::vector<std::string> wanted; /* words that could have stood at `wantedAt` */
    std::uint32_t wantedAt = NO_TOKEN;
};

SettingKind kindOf(const ObjectReader &r, std::string_view field) {
    return r.kinds.settingOf(r.kinds.state, field);
}

void want(ObjectReader &r, std::string text) {
    if (r.wantedAt != r.p.pos)
        r.wanted.clear();
    r.wantedAt = r.p.pos;
    if (std::find(r.wanted.begin(), r.wanted.end(), text) == r.wanted.end())
        r.wanted.push_back(std::move(text));
}

/* "A", "B" or "C" expected. */
void failWanted(ObjectReader &r, std::string last) {
    want(r, std::move(last));
    std::string text;
    for (std::size_t i = 0; i < r.wanted.size(); ++i)
        text += (i == 0 ? "" : i + 1 == r.wanted.size() ? " or " : ", ") + r.wanted[i];
    failExpected(r.p, text);
}

/* The extent of a setting: braces, or a reference. */
void skipSetting(Parser &p) {
    Reference ref;
    std::vector<Name> fields;
    std::vector<bool> fieldIsUpper;
    if (at(p, TokenKind::OpenBrace))
        skipBraces(p);
    else if (at(p, TokenKind::Lower) || isUpperName(p, peek(p)))
        parseReference(p, ref, fields, fieldIsUpper);
    else
        failExpected(p, "\"{\" or a reference");
}

/* A field that the class doesn't have: whatever stands up to the comma. */
void skipUnknown(Parser &p) {
    int depth = 0;
    for (; p.pos < p.end; ++p.pos) {
        const TokenKind kind = peek(p).kind;
        if (kind == TokenKind::Comma && depth == 0)
            return;
        depth += kind == TokenKind::OpenBrace ? 1 : kind == TokenKind::CloseBrace ? -1 : 0;
    }
}

bool hasField(const ObjectClass &objectClass, std::string_view name) {
    return std::any_of(objectClass.fields.begin(), objectClass.fields.end(),
                       [&](const ClassField &field) { return field.name.text == name; });
}

void cutSetting(ObjectReader &r, Name field, bool upper) {
    FieldSetting setting;
    setting.field = field;
    setting.upper = upper;
    setting.place = here(r.p);
    const std::uint32_t begin = r.p.pos;
    const bool known = hasField(r.objectClass, field.text);
    const SettingKind kind = known ? kindOf(r, field.text) : SettingKind::Value;
    if (!known)
        skipUnknown(r.p);
    else if (kind == SettingKind::Type)
        parseType(r.p);
    else if (kind == SettingKind::Value)
        parseValue(r.p);
    else
        skipSetting(r.p);
    setting.tokens = rangeFrom(r.p, begin);
    if (!r.p.failed)
        r.settings.push_back(setting);
}

bool matchesLiteral(const Parser &p, const SyntaxItem &item) {
    const Token &token = peek(p);
    return token.kind != TokenKind::End && textOf(p.file, token) == item.text.text;
}

/* Whether a literal that may come behind the item stands there already. */
bool isFollowed(const ObjectReader &r, const Follow *follow) {
    for (; follow != nullptr; follow = follow->outer) {
        for (std::size_t i = follow->next; i < follow->items->size(); ++i) {
            const SyntaxItem &item = (*follow->items)[i];
            if (item.kind == SyntaxItem::Literal)
                return matchesLiteral(r.p, item);
            if (item.kind == SyntaxItem::Field)
                return false;
            const Follow group{&item.group, 0, nullptr};
            if (item.group[0].kind == SyntaxItem::Literal ? matchesLiteral(r.p, item.group[0])
                                                          : isFollowed(r, &group))
                return true;
        }
    }
    return false;
}

bool canBeSetting(const ObjectReader &r, const SyntaxItem &field) {
    const Token &token = peek(r.p);
    const bool name = token.kind == TokenKind::Lower;
    const bool upper = isUpperName(r.p, token);
    switch (kindOf(r, field.text.text)) {
    case SettingKind::Type:
        return beginsType(r.p, token) || name;
    case SettingKind::Value:
        return beginsValue(token) || beginsType(r.p, token);
    case SettingKind::Object:
        return name || upper || token.kind == TokenKind::OpenBrace;
    default:
        return upper || name || token.kind == TokenKind::OpenBrace;
    }
}

/* Whether a group, or one around it, may be left out and what stands there comes behind it. */
bool isBehindGroup(const ObjectReader &r, const Follow *outer) {
    for (; outer != nullptr; outer = outer->outer)
        if (isFollowed(r, outer))
            return true;
    return false;
}

/* Whether the token there can be the first of a group: of its first item, or of the next one if
   that may be left out. `at.outer` is what follows the group. */
bool canBegin(const ObjectReader &r, const Follow &at) {
    for (std::size_t i = at.next; i < at.items->size(); ++i) {
        const SyntaxItem &item = (*at.items)[i];
        const Follow behindItem{at.items, i + 1, at.outer};
        if (item.kind == SyntaxItem::Literal)
            return matchesLiteral(r.p, item);
        if (item.kind == SyntaxItem::Field)
            return canBeSetting(r, item) && !isBehindGroup(r, at.outer);
        if (canBegin(r, {&item.group, 0, &behindItem}))
            return true;
    }
    return false;
}

/* Notes what a group that was left out could have begun with. */
void wantGroup(ObjectReader &r, const SyntaxItem &group) {
    const SyntaxItem &first = group.group[0];
    if (first.kind == SyntaxItem::Literal)
        want(r, quoted(first.text.text));
    else if (first.kind == SyntaxItem::Group)
        wantGroup(r, first);
    else
        want(r, "a setting of &" + std::string(first.text.text));
}

void matchItems(ObjectReader &r, const std::vector<SyntaxItem> &items, const Follow *outer) {
    for (std::size_t i = 0; i < items.size() && !r.p.failed; ++i) {
        const SyntaxItem &item = items[i];
        const Follow follow{&items, i + 1, outer};
        if (item.kind == SyntaxItem::Group) {
            if (r.p.pos < r.p.end && canBegin(r, {&item.group, 0, &follow}))
                matchItems(r, item.group, &follow);
            else
                wantGroup(r, item);
        } else if (item.kind == SyntaxItem::Literal) {
            if (matchesLiteral(r.p, item))
                advance(r.p);
            else
                failWanted(r, quoted(item.text.text));
        } else if (r.p.pos >= r.p.end || !canBeSetting(r, item)) {
            failWanted(r, "a setting of &" + std::string(item.text.text));
        } else {
            cutSetting(r, item.text, item.upper);
        }
    }
}

/* { &a 1, &B INTEGER } */
void readDefaultSyntax(ObjectReader &r) {
    Parser &p = r.p;
    while (!p.failed && p.pos < p.end) {
        if (!at(p, TokenKind::AmpUpper) && !at(p, TokenKind::AmpLower)) {
            failExpected(p, "a field (\"&name\")");
            return;
        }
        const bool upper = at(p, TokenKind::AmpUpper);
        cutSetting(r, takeName(p), upper);
        if (p.failed || p.pos == p.end)
            return;
        if (!take(p, TokenKind::Comma))
            failExpected(p, "\",\" or \"}\"");
        else if (isCommaTooMany(p, TokenKind::End))
            return;
    }
}

} // namespace

std::vector<FieldSetting> readObject(ParseContext &context, TokenRange range,
                                     const ObjectClass &objectClass, SettingKinds kinds,
                                     bool &sound) {
    ObjectReader r{parserOf(context, range), objectClass, kinds, {}, {}, NO_TOKEN};
    r.p.typePlace = TypePlace::Setting;
    if (!objectClass.hasSyntax) {
        readDefaultSyntax(r);
    } else {
        matchItems(r, objectClass.syntax, nullptr);
        if (!r.p.failed && r.p.pos < r.p.end)
            failWanted(r, "\"}\"");
    }
    sound = !r.p.failed;
    return std::move(r.settings);
}

} // namespace asntree
