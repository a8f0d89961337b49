#include "asntree/lexer.h"

#include "asntree/lexstate.h"

namespace asntree {

namespace {

constexpr std::string_view NO_BREAK_SPACE = "\xC2\xA0";
constexpr std::string_view NON_BREAKING_HYPHEN = "\xE2\x80\x91";
constexpr char SUBSTITUTE = 0x1A; /* some editors of old end a file with it */

/* "--@ words": kept for the definition or component in front of it. */
void keepDirective(LexState &state, std::size_t begin, std::size_t end) {
    while (begin < end && isOf(state.text[begin], CHAR_SPACE))
        ++begin;
    while (end > begin && isOf(state.text[end - 1], CHAR_SPACE))
        --end;
    Directive directive;
    directive.token = static_cast<std::uint32_t>(state.file.tokens.size());
    directive.offset = static_cast<std::uint32_t>(begin);
    directive.words = std::string_view(state.text + begin, end - begin);
    state.file.directives.push_back(directive);
}

/* A published line of hyphens may have one more than pairs: the comment is at its end, and a single
   hyphen follows that nothing needs. */
void dropStrayHyphen(LexState &state) {
    if (state.peek() != '-' || state.peek(1) == '-' || isOf(state.peek(1), CHAR_DIGIT))
        return;
    if (!state.strayHyphenReported)
        slip(state.diagnostics, state.place(state.at),
             "the comment ends in front of this hyphen, which is passed over here and in the rest "
             "of "
             "the file");
    state.strayHyphenReported = true;
    ++state.at;
}

void skipLineComment(LexState &state) {
    const std::size_t begin = state.at + 2;
    std::size_t end = begin;
    bool closed = false;
    for (; end < state.size && !isOf(state.text[end], CHAR_END); ++end) {
        if (state.text[end] == '-' && end + 1 < state.size && state.text[end + 1] == '-') {
            closed = true;
            break;
        }
    }
    if (begin < end && state.text[begin] == '@')
        keepDirective(state, begin + 1, end);
    state.at = closed ? end + 2 : end;
    if (closed)
        dropStrayHyphen(state);
}

void skipBlockComment(LexState &state) {
    const std::size_t begin = state.at;
    std::size_t depth = 1;
    state.at += 2;
    while (depth > 0 && state.at < state.size) {
        const char c = state.text[state.at];
        const char next = state.peek(1);
        if ((c == '/' && next == '*') || (c == '*' && next == '/')) {
            depth = c == '/' ? depth + 1 : depth - 1;
            ++state.at;
        }
        ++state.at;
    }
    if (depth > 0)
        error(state.diagnostics, state.place(begin), "this comment has no end: \"*/\" is missing");
}

void skipSpace(LexState &state) {
    for (;;) {
        while (state.at < state.size && isOf(state.text[state.at], CHAR_SPACE))
            ++state.at;
        if (state.peek() == '-' && state.peek(1) == '-')
            skipLineComment(state);
        else if (state.peek() == '/' && state.peek(1) == '*')
            skipBlockComment(state);
        else if (state.peek() == NO_BREAK_SPACE[0] && state.peek(1) == NO_BREAK_SPACE[1])
            state.at += NO_BREAK_SPACE.size();
        else
            return;
    }
}

/* The end of the name that begins at `at`. A hyphen belongs to it if a letter or digit follows. */
std::size_t endOfName(const LexState &state, bool &underline) {
    std::size_t end = state.at;
    for (;;) {
        while (end < state.size && isOf(state.text[end], CHAR_NAME)) {
            underline = underline || state.text[end] == '_';
            ++end;
        }
        if (end + 1 >= state.size || state.text[end] != '-' ||
            !isOf(state.text[end + 1], CHAR_NAME))
            return end;
        ++end;
    }
}

void checkName(LexState &state, std::size_t begin, bool underline) {
    const std::string_view name(state.text + begin, state.at - begin);
    if (underline && state.underlined.insert(name).second)
        slip(state.diagnostics, state.place(begin + name.find('_')),
             "\"_\" can't stand in a name of ASN.1: " + std::string(name));
    if (state.peek() == '-' && state.peek(1) != '-') {
        error(state.diagnostics, state.place(state.at), "a name can't end with a hyphen");
        ++state.at;
    }
}

void lexName(LexState &state) {
    const std::size_t begin = state.at;
    bool underline = false;
    state.at = endOfName(state, underline);
    const std::string_view name(state.text + begin, state.at - begin);
    const std::size_t letter = underline ? name.find_first_not_of('_') : 0;
    const bool upper = letter < name.size() && isOf(name[letter], CHAR_UPPER);
    const Word word = upper && !underline ? wordOf(name) : Word::None;
    addToken(state,
             word != Word::None ? TokenKind::Word
             : upper            ? TokenKind::Upper
                                : TokenKind::Lower,
             begin, word);
    if (underline || state.peek() == '-')
        checkName(state, begin, underline);
}

void lexField(LexState &state) {
    const std::size_t begin = state.at++;
    if (!isOf(state.peek(), CHAR_LETTER)) {
        error(state.diagnostics, state.place(begin),
              "the name of a field must follow \"&\" at once");
        addToken(state, TokenKind::Bad, begin);
        return;
    }
    const bool upper = isOf(state.peek(), CHAR_UPPER);
    bool underline = false;
    state.at = endOfName(state, underline);
    addToken(state, upper ? TokenKind::AmpUpper : TokenKind::AmpLower, begin);
    if (underline || state.peek() == '-')
        checkName(state, begin + 1, underline);
}

std::size_t skipDigits(LexState &state) {
    const std::size_t begin = state.at;
    while (isOf(state.peek(), CHAR_DIGIT))
        ++state.at;
    return state.at - begin;
}

void checkLeadingZero(LexState &state, std::size_t begin, std::size_t digits) {
    if (digits > 1 && state.text[begin] == '0')
        error(state.diagnostics, state.place(begin), "a number can't begin with a zero");
}

/* Whether what comes now is the number of a named arc behind others: `iso org(3) ecma(0012)`. */
bool isInArcs(const LexState &state) {
    const std::vector<Token> &tokens = state.file.tokens;
    if (tokens.size() < 3 || tokens.back().kind != TokenKind::OpenParen ||
        tokens[tokens.size() - 2].kind != TokenKind::Lower)
        return false;
    const TokenKind before = tokens[tokens.size() - 3].kind;
    return before == TokenKind::Lower || before == TokenKind::Number ||
           before == TokenKind::CloseParen;
}

void lexNumber(LexState &state) {
    const std::size_t begin = state.at;
    const std::size_t digits = skipDigits(state);
    if (digits > 1 && state.text[begin] == '0' && isInArcs(state))
        slip(state.diagnostics, state.place(begin), "an arc can't begin with a zero");
    else
        checkLeadingZero(state, begin, digits);
    TokenKind kind = TokenKind::Number;
    if (state.peek() == '.' && state.peek(1) != '.') {
        kind = TokenKind::Real;
        ++state.at;
        skipDigits(state);
    }
    if (state.peek() == 'e' || state.peek() == 'E') {
        const std::size_t sign = state.peek(1) == '-' || state.peek(1) == '+' ? 1 : 0;
        if (isOf(state.peek(1 + sign), CHAR_DIGIT)) {
            kind = TokenKind::Real;
            state.at += 1 + sign;
            const std::size_t exponent = state.at;
            checkLeadingZero(state, exponent, skipDigits(state));
        }
    }
    addToken(state, kind, begin);
}

/* Tokens of one kind of octet that may be repeated: "." to "...", ":" and "::=", brackets. */
bool lexLongSign(LexState &state) {
    static constexpr struct {
        std::string_view text;
        TokenKind kind;
    } signs[] = {
        {"::=", TokenKind::Assign},     {"...", TokenKind::Ellipsis},    {"..", TokenKind::Range},
        {"[[", TokenKind::OpenVersion}, {"]]", TokenKind::CloseVersion},
    };
    for (const auto &sign : signs) {
        if (state.begins(sign.text)) {
            const std::size_t begin = state.at;
            state.at += sign.text.size();
            addToken(state, sign.kind, begin);
            return true;
        }
    }
    return false;
}

constexpr std::array<TokenKind, 128> makeSigns() {
    std::array<TokenKind, 128> kinds{};
    for (TokenKind &kind : kinds)
        kind = TokenKind::Bad;
    constexpr std::string_view signs = "{}()[]<>,.:;=|^@!*-/";
    auto kind = static_cast<int>(TokenKind::OpenBrace);
    for (const char sign : signs)
        kinds[static_cast<std::size_t>(sign)] = static_cast<TokenKind>(kind++);
    return kinds;
}
constexpr std::array<TokenKind, 128> signKinds = makeSigns();
static_assert(signKinds['/'] == TokenKind::Slash);

void lexSign(LexState &state) {
    const auto c = static_cast<unsigned char>(state.peek());
    if ((c == '.' || c == ':' || c == '[' || c == ']') && lexLongSign(state))
        return;
    if (c >= signKinds.size() || signKinds[c] == TokenKind::Bad) {
        lexStrange(state);
        return;
    }
    if (c == '*' && state.peek(1) == '/') {
        error(state.diagnostics, state.place(state.at), "\"*/\" ends no comment here");
        state.at += 2;
        return;
    }
    const bool assigned =
        !state.file.tokens.empty() && state.file.tokens.back().kind == TokenKind::Assign;
    if (c == '<' && assigned && isOf(state.peek(1), CHAR_LETTER)) {
        lexXmlValue(state);
        return;
    }
    ++state.at;
    addToken(state, signKinds[c], state.at - 1);
}

void lexToken(LexState &state) {
    const char c = state.peek();
    if (isOf(c, CHAR_LETTER | CHAR_UNDERLINE))
        lexName(state);
    else if (isOf(c, CHAR_DIGIT))
        lexNumber(state);
    else if (c == '&')
        lexField(state);
    else if (c == '"')
        lexCString(state);
    else if (c == '\'')
        lexQuoted(state);
    else
        lexSign(state);
}

void lexAll(LexState &state) {
    std::vector<Token> &tokens = state.file.tokens;
    tokens.reserve(state.size / 8 + 16);
    for (skipSpace(state); state.at < state.size; skipSpace(state))
        lexToken(state);
    addToken(state, TokenKind::End, state.at);
    if (tokens.capacity() - tokens.size() > tokens.size() / 4)
        tokens.shrink_to_fit();
}

std::size_t sizeWithoutEnd(std::string_view text) {
    std::size_t size = text.size();
    while (size > 0 && (isOf(text[size - 1], CHAR_SPACE) || text[size - 1] == SUBSTITUTE))
        --size;
    return size;
}

/* Names that are equal but for the kind of their hyphens are one name. Such a hyphen outside of
   strings becomes a plain one; where the strings lie the tokens say. */
void plainHyphens(SourceFile &file, Diagnostics &diagnostics) {
    Diagnostics unheard(diagnostics.sources);
    LexState state(file, unheard);
    lexAll(state);
    std::string plain;
    std::size_t done = 0;
    std::size_t token = 0;
    std::size_t at = 0;
    while ((at = file.text.find(NON_BREAKING_HYPHEN, at)) != std::string::npos) {
        while (token + 1 < file.tokens.size() &&
               file.tokens[token].offset + file.tokens[token].length <= at)
            ++token;
        const TokenKind kind = file.tokens[token].kind;
        const bool quoted = kind == TokenKind::CString || kind == TokenKind::XmlValue;
        if (!quoted || file.tokens[token].offset > at) {
            plain.append(file.text, done, at - done) += '-';
            done = at + NON_BREAKING_HYPHEN.size();
        }
        at += NON_BREAKING_HYPHEN.size();
    }
    file.text = plain.append(file.text, done);
    file.tokens.clear();
    file.directives.clear();
}

bool isUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ||
           (text.size() >= 4 && (text[0] == '\0') != (text[1] == '\0') &&
            (text[2] == '\0') == (text[0] == '\0') && (text[3] == '\0') == (text[1] == '\0'));
}

} // namespace

LexState::LexState(SourceFile &source, Diagnostics &messages)
    : file(source), diagnostics(messages), text(source.text.c_str()),
      size(sizeWithoutEnd(source.text)) {}

void addToken(LexState &state, TokenKind kind, std::size_t begin, Word word) {
    state.file.tokens.push_back({kind, word, static_cast<std::uint32_t>(begin),
                                 static_cast<std::uint32_t>(state.at - begin)});
}

std::size_t endOfLine(const LexState &state, std::size_t at) {
    while (at < state.size && !isOf(state.text[at], CHAR_END))
        ++at;
    return at;
}

void lex(SourceFile &file, Diagnostics &diagnostics) {
    if (isUtf16(file.text)) {
        error(diagnostics, {file.number, 0}, "the file is in UTF-16; write it in UTF-8");
        file.tokens.emplace_back();
        return;
    }
    if (file.text.find(NON_BREAKING_HYPHEN) != std::string::npos)
        plainHyphens(file, diagnostics);
    LexState state(file, diagnostics);
    lexAll(state);
}

} // namespace asntree
