#include <algorithm>

#include "asntree/parsing.h"

/* Where assignments and modules begin, found from the "::=" backwards: that is how a mistake is
   left behind, and how the end of what has no grammar is found. */

namespace asntree {

namespace {

TokenKind kindAt(const Parser &p, std::uint32_t i) {
    return p.file.tokens[i].kind;
}

bool firstOnLine(const Parser &p, std::uint32_t i) {
    if (i == 0)
        return true;
    const Token &before = p.file.tokens[i - 1];
    const std::uint32_t begin = before.offset + before.length;
    const std::string_view between =
        std::string_view(p.file.text).substr(begin, p.file.tokens[i].offset - begin);
    return between.find_first_of("\n\r\v\f") != std::string_view::npos;
}

/* How far a token that is the first of its line is indented. */
std::uint32_t indentation(const Parser &p, std::uint32_t i) {
    std::uint32_t column = 0;
    for (std::uint32_t at = p.file.tokens[i].offset; at-- > 0;) {
        const char letter = p.file.text[at];
        if (letter == '\n' || letter == '\r')
            break;
        column += letter == '\t' ? 8 : 1;
    }
    return column;
}

bool isName(const Parser &p, std::uint32_t i) {
    return kindAt(p, i) == TokenKind::Lower || isUpperName(p, p.file.tokens[i]);
}

/* Words of macros' instances begin lines too. */
bool isClauseWord(const Parser &p, std::uint32_t i) {
    return kindAt(p, i) == TokenKind::Upper && isMacroClause(textOf(p.file, p.file.tokens[i]));
}

bool closes(TokenKind kind) {
    return kind == TokenKind::CloseBrace || kind == TokenKind::CloseParen ||
           kind == TokenKind::CloseBracket;
}

bool opens(TokenKind kind) {
    return kind == TokenKind::OpenBrace || kind == TokenKind::OpenParen ||
           kind == TokenKind::OpenBracket;
}

/* The "{" of the "}" at `i`, or NO_TOKEN. */
std::uint32_t openingBrace(const Parser &p, std::uint32_t i, std::uint32_t low) {
    int depth = 0;
    for (;; --i) {
        const TokenKind kind = kindAt(p, i);
        if (kind == TokenKind::CloseBrace)
            ++depth;
        else if (kind == TokenKind::OpenBrace && --depth == 0)
            return i;
        if (i == low || kind == TokenKind::Assign)
            return NO_TOKEN;
    }
}

/* The name at `last` is all that stands left of "::=": it begins its line, and it is not the
   indented type of a value or set whose name stands on the line in front of it. */
bool standsAlone(const Parser &p, std::uint32_t last, std::uint32_t low) {
    if (!isName(p, last) || !firstOnLine(p, last) || isClauseWord(p, last))
        return false;
    if (last <= low + 1 || !isName(p, last - 1) || !firstOnLine(p, last - 1))
        return true;
    return kindAt(p, last - 2) == TokenKind::Assign ||
           indentation(p, last) <= indentation(p, last - 1);
}

/* Names that an assignment may begin with. */
struct StartCandidates {
    std::uint32_t first = NO_TOKEN; /* begins a line, and is indented least */
    std::uint32_t column = 0;
    std::uint32_t lower = NO_TOKEN; /* the last one with a small letter */
};

void addCandidate(const Parser &p, StartCandidates &found, std::uint32_t i) {
    const bool lower = kindAt(p, i) == TokenKind::Lower;
    if (lower && found.lower == NO_TOKEN)
        found.lower = i;
    if (!firstOnLine(p, i))
        return;
    const std::uint32_t column = indentation(p, i);
    const bool better =
        found.first == NO_TOKEN || column < found.column ||
        (column == found.column && lower && kindAt(p, found.first) != TokenKind::Lower);
    if (better) {
        found.first = i;
        found.column = column;
    }
}

/* The name that the assignment begins with whose governor ends at `last`: the one that begins a
   line and is indented least, or, in text without lines, the nearest one in front of the type. */
std::uint32_t nameBefore(const Parser &p, std::uint32_t last, std::uint32_t low) {
    StartCandidates found;
    int depth = 0;
    for (std::uint32_t i = last;; --i) {
        const TokenKind kind = kindAt(p, i);
        if (closes(kind))
            ++depth;
        else if (opens(kind) && --depth < 0)
            break;
        if (kind == TokenKind::Assign)
            break;
        if (depth == 0 && i != last && isName(p, i) && !isClauseWord(p, i))
            addCandidate(p, found, i);
        if (i == low)
            break;
    }
    if (found.first != NO_TOKEN)
        return found.first;
    const bool named = isUpperName(p, p.file.tokens[last]);
    return named && (found.lower == NO_TOKEN || found.lower + 1 != last) ? last : found.lower;
}

std::uint32_t assignmentStart(const Parser &p, std::uint32_t assign, std::uint32_t low) {
    if (assign == low)
        return NO_TOKEN;
    std::uint32_t last = assign - 1;
    if (kindAt(p, last) == TokenKind::CloseBrace) {
        last = openingBrace(p, last, low);
        if (last == NO_TOKEN || last == low)
            return NO_TOKEN;
        --last;
    }
    if (p.file.tokens[last].word == Word::MACRO)
        return last > low ? last - 1 : NO_TOKEN;
    if (standsAlone(p, last, low))
        return last;
    if (last == low)
        return isName(p, last) ? last : NO_TOKEN;
    return nameBefore(p, last, low);
}

} // namespace

std::uint32_t headerStart(const Parser &p, std::uint32_t definitions, std::uint32_t low) {
    if (definitions == low)
        return definitions;
    std::uint32_t last = definitions - 1;
    if (kindAt(p, last) == TokenKind::CString && last > low)
        --last;
    if (kindAt(p, last) == TokenKind::CloseBrace) {
        last = openingBrace(p, last, low);
        if (last == NO_TOKEN || last == low)
            return definitions;
        --last;
    }
    return isName(p, last) ? last : definitions;
}

std::uint32_t nextAssignment(const Parser &p, std::uint32_t from, std::uint32_t low) {
    std::uint32_t i = from;
    for (; i < p.end; ++i) {
        const Token &token = p.file.tokens[i];
        if (token.word == Word::DEFINITIONS)
            return headerStart(p, i, low);
        if (token.word == Word::END || token.word == Word::ENCODING_CONTROL ||
            token.kind == TokenKind::End)
            return i;
        if (token.kind != TokenKind::Assign)
            continue;
        const std::uint32_t start = assignmentStart(p, i, low);
        if (start != NO_TOKEN)
            return start;
        low = i + 1;
        if (low == p.end)
            break;
    }
    return p.end;
}

} // namespace asntree
