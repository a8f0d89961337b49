#include <algorithm>

#include "asntree/parsing.h"

namespace asntree {

const Token END_TOKEN{};

namespace {

/* So many tokens behind a mistake that was passed over, another one is most likely its echo. */
constexpr std::uint32_t ECHO = 6;
constexpr std::size_t LONGEST_QUOTE = 40;

const ModuleWords *wordsAt(const ParseContext &context, TokenRange range) {
    if (range.file >= context.arena.words.size())
        return nullptr;
    const std::vector<ModuleWords> &modules = context.arena.words[range.file];
    const auto behind = std::upper_bound(
        modules.begin(), modules.end(), range.begin,
        [](std::uint32_t token, const ModuleWords &words) { return token < words.firstToken; });
    return behind == modules.begin() ? nullptr : &*(behind - 1);
}

/* The token that really stands there, be it behind the range. */
const Token &tokenHere(const Parser &p) {
    const std::size_t last = p.file.tokens.size() - 1;
    return p.file.tokens[std::min<std::size_t>(p.pos, last)];
}

bool opens(TokenKind kind) {
    return kind == TokenKind::OpenBrace || kind == TokenKind::OpenParen ||
           kind == TokenKind::OpenBracket || kind == TokenKind::OpenVersion;
}

} // namespace

Parser parserOf(ParseContext &context, TokenRange range) {
    Parser p{context, context.sources[range.file]};
    p.words = wordsAt(context, range);
    p.pos = range.begin;
    p.end = range.end;
    return p;
}

Place here(const Parser &p) {
    return {p.file.number, tokenHere(p).offset};
}

Place behind(const Parser &p) {
    if (p.pos == 0)
        return {p.file.number, 0};
    const Token &token = p.file.tokens[p.pos - 1];
    return {p.file.number, token.offset + token.length};
}

TokenRange rangeFrom(const Parser &p, std::uint32_t begin) {
    return {p.file.number, begin, p.pos};
}

Name nameHere(const Parser &p) {
    const Token &token = tokenHere(p);
    std::string_view text = textOf(p.file, token);
    if (!text.empty() && text[0] == '&')
        text.remove_prefix(1);
    return {text, {p.file.number, token.offset}};
}

Name takeName(Parser &p) {
    if (p.failed)
        return {};
    const Name name = nameHere(p);
    advance(p);
    return name;
}

namespace {

std::string shortened(std::string_view text) {
    if (text.size() <= LONGEST_QUOTE)
        return std::string(text);
    std::size_t length = LONGEST_QUOTE;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    return std::string(text.substr(0, length)) + "...";
}

} // namespace

std::string quoted(std::string_view text) {
    return "\"" + shortened(text) + "\"";
}

void fail(Parser &p, Place place, std::string text) {
    const bool echo = p.softError != NO_TOKEN && p.pos <= p.softError + ECHO;
    /* The lexer has told of a bad token. */
    if (!p.failed && !echo && tokenHere(p).kind != TokenKind::Bad)
        error(p.context.diagnostics, place, std::move(text));
    p.failed = true;
}

void failExpected(Parser &p, std::string_view what) {
    if (p.failed)
        return;
    const Token &token = tokenHere(p);
    std::string text(what);
    text += " expected, found ";
    if (token.kind == TokenKind::End)
        text += kindText(TokenKind::End);
    else if (token.kind == TokenKind::CString)
        text += shortened(textOf(p.file, token));
    else
        text += quoted(textOf(p.file, token));
    fail(p, here(p), std::move(text));
}

void complain(Parser &p, Place place, std::string text) {
    if (p.failed)
        return;
    error(p.context.diagnostics, place, std::move(text));
    p.softError = p.pos;
}

bool expect(Parser &p, TokenKind kind) {
    if (take(p, kind))
        return true;
    failExpected(p, kindText(kind));
    return false;
}

bool expectWord(Parser &p, Word word) {
    if (takeWord(p, word))
        return true;
    failExpected(p, quoted(wordText(word)));
    return false;
}

bool finished(Parser &p) {
    if (!p.failed && p.pos < p.end)
        fail(p, here(p), quoted(textOf(p.file, tokenHere(p))) + " doesn't belong here");
    return !p.failed;
}

TokenRange skipBraces(Parser &p) {
    const Place place = here(p);
    if (!expect(p, TokenKind::OpenBrace))
        return {};
    const std::uint32_t begin = p.pos;
    int depth = 1;
    for (; p.pos < p.end; ++p.pos) {
        const TokenKind kind = peek(p).kind;
        if (kind == TokenKind::OpenBrace) {
            if (++depth + p.depth > MAX_NESTING) {
                fail(p, here(p), "braces are nested too deeply");
                return {};
            }
        } else if (kind == TokenKind::CloseBrace && --depth == 0) {
            ++p.pos;
            return {p.file.number, begin, p.pos - 1};
        } else if (kind == TokenKind::Assign || kind == TokenKind::XmlValue) {
            break; /* the next assignment began: the brace was forgotten */
        }
    }
    fail(p, place, "this \"{\" is not closed");
    return {};
}

void claimDirectives(Parser &p, std::vector<std::uint32_t> &list) {
    std::vector<Directive> &all = p.file.directives;
    if (p.failed || all.empty())
        return;
    auto first = std::lower_bound(
        all.begin(), all.end(), p.pos,
        [](const Directive &directive, std::uint32_t token) { return directive.token < token; });
    for (; first != all.end() && first->token == p.pos; ++first) {
        first->taken = true;
        list.push_back(static_cast<std::uint32_t>(first - all.begin()));
    }
}

Nesting::Nesting(Parser &parser) : p(parser) {
    if (++p.depth > MAX_NESTING)
        fail(p, here(p), "nested more than " + std::to_string(MAX_NESTING) + " levels deep");
}

bool isCommaTooMany(Parser &p, TokenKind close) {
    const bool last = close == TokenKind::End ? !p.failed && p.pos == p.end : at(p, close);
    if (last)
        slip(p.context.diagnostics, {p.file.number, p.file.tokens[p.pos - 1].offset},
             "a comma too many at the end of a list");
    return last;
}

/* Actual parameters: cut at the commas, read when it is known what each of them is. */
static void cutParameters(Parser &p, Reference &ref) {
    const TokenRange all = skipBraces(p);
    ref.hasParameters = true;
    if (p.failed || all.empty())
        return;
    std::uint32_t begin = all.begin;
    int depth = 0;
    for (std::uint32_t i = all.begin; i < all.end; ++i) {
        const TokenKind kind = p.file.tokens[i].kind;
        if (opens(kind)) {
            ++depth;
        } else if (kind == TokenKind::CloseBrace || kind == TokenKind::CloseParen ||
                   kind == TokenKind::CloseBracket || kind == TokenKind::CloseVersion) {
            --depth;
        } else if (kind == TokenKind::Comma && depth == 0) {
            ref.parameters.push_back({all.file, begin, i});
            begin = i + 1;
        }
    }
    ref.parameters.push_back({all.file, begin, all.end});
}

void parseReference(Parser &p, Reference &ref, std::vector<Name> &fields,
                    std::vector<bool> &fieldIsUpper) {
    const auto isName = [&](const Token &token) {
        return token.kind == TokenKind::Lower || isUpperName(p, token) ||
               token.word == Word::TYPE_IDENTIFIER || token.word == Word::ABSTRACT_SYNTAX;
    };
    if (at(p, TokenKind::Upper) && nextIs(p, TokenKind::Dot) && isName(peek(p, 2))) {
        ref.module = takeName(p);
        advance(p);
    }
    ref.name = takeName(p);
    if (at(p, TokenKind::OpenBrace))
        cutParameters(p, ref);
    while (at(p, TokenKind::Dot)) {
        advance(p);
        if (!at(p, TokenKind::AmpUpper) && !at(p, TokenKind::AmpLower)) {
            failExpected(p, "a field (\"&name\")");
            return;
        }
        fieldIsUpper.push_back(at(p, TokenKind::AmpUpper));
        fields.push_back(takeName(p));
    }
}

} // namespace asntree
