#include "asntree/lexer.h"

namespace asntree {

namespace {

constexpr std::string_view DEFINITIONS = "DEFINITIONS";

/* The name in a header that ends with the last token but one: a name, an object identifier in
   braces or none, an IRI or none, DEFINITIONS. Empty if the tokens are none. */
std::string headerName(const SourceFile &file) {
    if (file.tokens.size() < 3)
        return {};
    std::size_t at = file.tokens.size() - 2;
    if (file.tokens[at].word != Word::DEFINITIONS || at == 0)
        return {};
    --at;
    if (file.tokens[at].kind == TokenKind::CString && at > 0)
        --at;
    if (file.tokens[at].kind == TokenKind::CloseBrace) {
        while (at > 0 && file.tokens[at].kind != TokenKind::OpenBrace)
            --at;
        if (at == 0)
            return {};
        --at;
    }
    const Token &name = file.tokens[at];
    const bool named = name.kind == TokenKind::Upper;
    return named ? std::string(textOf(file, name)) : std::string();
}

/* The header that ends behind a word DEFINITIONS, read from a line's begin in at most `reach`
   octets in front of it. */
std::string headerIn(std::string_view text, std::size_t reach) {
    std::size_t begin = 0;
    if (text.size() > reach) {
        begin = text.size() - reach;
        const std::size_t line = text.find_first_of("\n\r", begin);
        begin = line == text.npos ? begin : line;
    }
    Sources sources;
    Diagnostics unheard(sources);
    SourceFile *file = addSource(sources, {}, std::string(text.substr(begin)));
    lex(*file, unheard);
    return headerName(*file);
}

} // namespace

std::vector<std::string> moduleHeaders(std::string_view text) {
    std::vector<std::string> names;
    std::size_t begin = 0;
    std::size_t at = 0;
    /* A header lies between the word before and this one, so all looks together are linear. */
    while ((at = text.find(DEFINITIONS, at)) != text.npos) {
        at += DEFINITIONS.size();
        const std::string_view part = text.substr(begin, at - begin);
        begin = at;
        std::string name = headerIn(part, 1000);
        if (name.empty() && part.size() > 1000)
            name = headerIn(part, 16 * 1024);
        if (!name.empty())
            names.push_back(std::move(name));
    }
    return names;
}

} // namespace asntree
