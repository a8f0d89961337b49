#include "asntree/parsing.h"

namespace asntree {

namespace {

/* Where the list of a SEQUENCE, SET or CHOICE is. */
struct ListState {
    Type &type;
    bool choice = false;
    int markers = 0;
    int groups = 0; /* version brackets begun so far */
    bool inGroup = false;
    std::int32_t version = -1;    /* the number of those that are open; -1: they have none */
    std::int32_t lastVersion = 1; /* of the brackets in front; -1: they have none */
};

void parseMarker(Parser &p, ListState &list) {
    Component marker;
    marker.kind = ComponentKind::Marker;
    marker.place = here(p);
    if (list.inGroup)
        complain(p, here(p), "\"...\" can't stand in version brackets");
    else if (++list.markers > 2)
        fail(p, here(p), "a list of components has two \"...\" at most");
    else if (list.choice && list.type.components.empty())
        slip(p.context.diagnostics, here(p), "a CHOICE needs an alternative in front of \"...\"");
    advance(p);
    if (at(p, TokenKind::Exclamation)) {
        if (list.markers > 1)
            complain(p, here(p), "an exception stands behind the first \"...\"");
        marker.defaultValue = parseException(p, nullptr);
    }
    list.type.components.push_back(std::move(marker));
}

/* Whether a capital name is meant to be the identifier: a type follows it. */
bool isWrongIdentifier(const Parser &p) {
    return at(p, TokenKind::Upper) && beginsType(p, peek(p, 1)) &&
           !isMacroName(p, nameHere(p).text);
}

bool beginsNamedComponent(const Parser &p) {
    if (!at(p, TokenKind::Lower))
        return false;
    const TokenKind second = peek(p, 1).kind;
    return second != TokenKind::Less && second != TokenKind::Dot;
}

void parsePresence(Parser &p, const ListState &list, Component &component) {
    const Place place = here(p);
    const bool given = atWord(p, Word::OPTIONAL) || atWord(p, Word::DEFAULT);
    if (given && list.choice)
        complain(p, place, "an alternative of a CHOICE is never OPTIONAL or DEFAULT");
    if (takeWord(p, Word::OPTIONAL)) {
        component.presence = Presence::Optional;
    } else if (takeWord(p, Word::DEFAULT)) {
        component.presence = Presence::Default;
        const Scoped<bool> pairs(p.pairs, true);
        component.defaultValue = parseValue(p);
    }
}

void parseComponent(Parser &p, ListState &list) {
    Component component;
    component.place = here(p);
    if (list.choice && list.markers > 1)
        complain(p, here(p), "nothing follows the second \"...\" of a CHOICE");
    if (atWord(p, Word::COMPONENTS) && !isRedefined(p, Word::COMPONENTS)) {
        if (list.choice)
            complain(p, here(p), "COMPONENTS OF can't stand in a CHOICE");
        advance(p);
        expectWord(p, Word::OF);
        component.kind = ComponentKind::ComponentsOf;
        component.type = parseType(p);
        list.type.components.push_back(std::move(component));
        return;
    }
    if (isWrongIdentifier(p)) {
        complain(p, here(p), "an identifier begins with a small letter");
        component.name = takeName(p);
    } else if (beginsNamedComponent(p)) {
        component.name = takeName(p);
    } else if (beginsType(p, peek(p)) || at(p, TokenKind::Lower)) {
        slip(p.context.diagnostics, here(p), "a component without an identifier");
    } else {
        failExpected(p, "a component");
        return;
    }
    component.type = parseType(p);
    parsePresence(p, list, component);
    list.type.components.push_back(std::move(component));
}

void parseRun(Parser &p, ListState &list, TokenKind close);

/* The number in front of the components in version brackets: all brackets of a list have one, or
   none has. They count from 2, since the root is the first version. */
void parseVersion(Parser &p, ListState &list) {
    const Place place = here(p);
    if (at(p, TokenKind::Number) && nextIs(p, TokenKind::Colon)) {
        list.version = 0;
        for (const char digit : textOf(p.file, peek(p)).substr(0, 9))
            list.version = list.version * 10 + (digit - '0');
        advance(p);
        advance(p);
    }
    if (list.groups > 1 && (list.version < 0) != (list.lastVersion < 0))
        complain(p, place, "either all version brackets of a type have a number, or none has");
    else if (list.version >= 0 && list.version < 2)
        complain(p, place, "the numbers in version brackets begin with 2");
    else if (list.version >= 0 && list.version <= list.lastVersion)
        complain(p, place, "the numbers in version brackets ascend");
    list.lastVersion = list.version;
}

/* [[ 2: a A, b B ]] */
void parseGroup(Parser &p, ListState &list) {
    if (list.inGroup)
        fail(p, here(p), "version brackets can't stand in version brackets");
    else if (list.markers != 1)
        complain(p, here(p), "version brackets stand behind \"...\" only");
    advance(p);
    const bool outer = list.inGroup;
    list.inGroup = true;
    ++list.groups;
    parseVersion(p, list);
    if (at(p, TokenKind::CloseVersion))
        failExpected(p, "a component");
    parseRun(p, list, TokenKind::CloseVersion);
    list.inGroup = outer;
    list.version = -1;
}

void parseListItem(Parser &p, ListState &list) {
    if (at(p, TokenKind::Ellipsis))
        parseMarker(p, list);
    else if (at(p, TokenKind::OpenVersion))
        parseGroup(p, list);
    else
        parseComponent(p, list);
}

bool beginsItem(const Parser &p) {
    return at(p, TokenKind::Ellipsis) || at(p, TokenKind::OpenVersion) ||
           (at(p, TokenKind::Lower) && (beginsType(p, peek(p, 1)) || nextIs(p, TokenKind::Lower)));
}

/* Items up to and with `close`; at least one. */
void parseRun(Parser &p, ListState &list, TokenKind close) {
    while (!p.failed) {
        const std::size_t before = list.type.components.size();
        parseListItem(p, list);
        const bool added = list.type.components.size() > before;
        if (added)
            claimDirectives(p, list.type.components.back().directives);
        if (take(p, TokenKind::Comma)) {
            if (added)
                claimDirectives(p, list.type.components.back().directives);
            if (isCommaTooMany(p, close)) {
                advance(p);
                return;
            }
        } else if (take(p, close)) {
            return;
        } else if (beginsItem(p)) {
            complain(p, behind(p), "\",\" is missing between two components");
        } else {
            failExpected(p, close == TokenKind::CloseBrace ? "\",\" or \"}\"" : "\",\" or \"]]\"");
        }
    }
}

} // namespace

void parseComponents(Parser &p, Type &type) {
    const Scoped<TypePlace> scoped(p.typePlace, TypePlace::Component);
    ListState list{type};
    list.choice = type.kind == TypeKind::Choice;
    if (at(p, TokenKind::CloseBrace) && list.choice)
        fail(p, here(p), "a CHOICE has at least one alternative");
    if (!take(p, TokenKind::CloseBrace))
        parseRun(p, list, TokenKind::CloseBrace);
}

} // namespace asntree
