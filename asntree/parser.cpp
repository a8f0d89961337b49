#include "asntree/parser.h"

#include <algorithm>

#include "asntree/parsemodule.h"

namespace asntree {

bool isRedefined(const Parser &p, Word word) {
    return word != Word::None && p.words != nullptr &&
           std::find(p.words->redefined.begin(), p.words->redefined.end(), word) !=
               p.words->redefined.end();
}

/* Words that every edition of ASN.1 has reserved. */
static constexpr Word alwaysReserved[] = {
    Word::ABSENT,      Word::ANY,           Word::APPLICATION, Word::BEGIN,
    Word::BIT,         Word::BOOLEAN,       Word::BY,          Word::CHOICE,
    Word::COMPONENT,   Word::COMPONENTS,    Word::DEFAULT,     Word::DEFINED,
    Word::DEFINITIONS, Word::END,           Word::ENUMERATED,  Word::EXPLICIT,
    Word::EXPORTS,     Word::FALSE,         Word::FROM,        Word::IDENTIFIER,
    Word::IMPLICIT,    Word::IMPORTS,       Word::INCLUDES,    Word::INTEGER,
    Word::MACRO,       Word::MAX,           Word::MIN,         Word::MINUS_INFINITY,
    Word::NULL_,       Word::OBJECT,        Word::OCTET,       Word::OF,
    Word::OPTIONAL,    Word::PLUS_INFINITY, Word::PRESENT,     Word::PRIVATE,
    Word::SEQUENCE,    Word::SET,           Word::SIZE,        Word::STRING,
    Word::TAGS,        Word::TRUE,          Word::UNIVERSAL,   Word::WITH,
};

void redefine(ModuleWords &words, Word word) {
    const auto has = [&](const auto &list) {
        return std::find(std::begin(list), std::end(list), word) != std::end(list);
    };
    if (!has(alwaysReserved) && !has(words.redefined))
        words.redefined.push_back(word);
}

bool isUpperName(const Parser &p, const Token &token) {
    return token.kind == TokenKind::Upper ||
           (token.kind == TokenKind::Word && isRedefined(p, token.word));
}

namespace {

bool lineBetween(const SourceFile &file, const Token &a, const Token &b) {
    const std::uint32_t begin = a.offset + a.length;
    return std::string_view(file.text).substr(begin, b.offset - begin).find_first_of("\n\r") !=
           std::string_view::npos;
}

/* Whether the reserved word at `i` is the name left of "::=", and not the type of a value. */
bool isDefined(const SourceFile &file, std::uint32_t i) {
    const Token &token = file.tokens[i];
    const TokenKind behindIt = file.tokens[i + 1].kind;
    if (token.kind != TokenKind::Word || behindIt != TokenKind::Assign || i == 0)
        return false;
    switch (token.word) {
    case Word::STRING:
    case Word::IDENTIFIER:
    case Word::MACRO:
    case Word::TAGS:
    case Word::IMPLIED:
    case Word::DEFINITIONS:
    case Word::INSTRUCTIONS:
        return false;
    default:
        break;
    }
    const Token &before = file.tokens[i - 1];
    const bool governs = before.kind == TokenKind::Lower || before.kind == TokenKind::Upper ||
                         before.kind == TokenKind::CloseBracket || before.word == Word::OF ||
                         before.word == Word::IMPLICIT || before.word == Word::EXPLICIT ||
                         before.kind == TokenKind::Less || before.kind == TokenKind::Assign;
    return !governs || lineBetween(file, before, token);
}

/* What the module that begins at the current token defines, up to the next module. */
void scanDefinitions(const Parser &p, ModuleWords &words) {
    bool header = true;
    for (std::uint32_t i = p.pos; i + 1 < p.end; ++i) {
        const Token &token = p.file.tokens[i];
        if (token.word == Word::DEFINITIONS) {
            if (!header)
                return;
            header = false;
        } else if (token.word == Word::MACRO && i > p.pos) {
            const Token &name = p.file.tokens[i - 1];
            if (name.kind == TokenKind::Upper)
                words.macros.push_back(textOf(p.file, name));
            else if (name.kind == TokenKind::Word)
                redefine(words, name.word);
        } else if (isDefined(p.file, i)) {
            redefine(words, token.word);
        }
    }
}

/* To the next header, behind a mistake in one. */
void leaveHeader(Parser &p, std::uint32_t begin) {
    p.failed = false;
    p.softError = NO_TOKEN;
    std::uint32_t i = std::max(p.pos, begin + 1);
    while (i < p.end && p.file.tokens[i].word != Word::DEFINITIONS)
        ++i;
    p.pos = i < p.end ? std::max(headerStart(p, i, begin + 1), begin + 1) : p.end;
    if (p.pos < p.end && atWord(p, Word::DEFINITIONS))
        ++p.pos;
}

/* Behind a mistake in the header, to its BEGIN; false if there is none before the next header. */
bool findBegin(Parser &p) {
    p.failed = false;
    p.softError = NO_TOKEN;
    for (std::uint32_t i = p.pos; i < p.end; ++i) {
        const Word word = p.file.tokens[i].word;
        if (word == Word::DEFINITIONS && i != p.pos)
            return false;
        if (word == Word::BEGIN) {
            p.pos = i + 1;
            p.lastAssign = p.pos;
            return true;
        }
    }
    return false;
}

/* ENCODING-CONTROL XER ... and what follows, up to END. */
void skipEncodingControl(Parser &p) {
    warning(p.context.diagnostics, here(p), "the instructions of ENCODING-CONTROL are read over");
    while (p.pos < p.end && !atWord(p, Word::END) && !at(p, TokenKind::End))
        ++p.pos;
}

/* The header of another module: END was forgotten. */
bool atHeader(const Parser &p) {
    if (peek(p, 1).word == Word::DEFINITIONS)
        return true;
    if (!nextIs(p, TokenKind::OpenBrace))
        return false;
    std::uint32_t i = p.pos + 2;
    for (; i < p.end; ++i) {
        const TokenKind kind = p.file.tokens[i].kind;
        if (kind == TokenKind::CloseBrace)
            break;
        if (kind == TokenKind::OpenBrace || kind == TokenKind::Assign)
            return false;
    }
    return i + 1 < p.end && p.file.tokens[i + 1].word == Word::DEFINITIONS;
}

bool beginsAssignment(const Parser &p) {
    const Token &token = peek(p);
    if (token.kind != TokenKind::Word)
        return token.kind == TokenKind::Upper || token.kind == TokenKind::Lower;
    return isRedefined(p, token.word) || nextIs(p, TokenKind::Assign) ||
           nextIs(p, TokenKind::OpenBrace) || peek(p, 1).word == Word::MACRO;
}

/* Behind a mistake in the assignment that begins at `begin`. */
void recover(Parser &p, std::uint32_t begin) {
    p.failed = false;
    p.depth = 0;
    const std::uint32_t low = std::max(p.lastAssign, begin + 1);
    p.pos = std::max(nextAssignment(p, std::max(p.pos, low), low), low);
}

/* The assignments up to and with END. */
void parseBody(Parser &p, Module &module) {
    for (bool lost = false;;) {
        p.softError = NO_TOKEN;
        const std::uint32_t begin = p.pos;
        module.end = here(p);
        if (takeWord(p, Word::END))
            return;
        if (at(p, TokenKind::End) || atHeader(p)) {
            if (!lost) /* else the mistake is told already */
                failExpected(p, "\"END\"");
            p.failed = false;
            return;
        }
        if (atWord(p, Word::ENCODING_CONTROL)) {
            skipEncodingControl(p);
            continue;
        }
        if (at(p, TokenKind::Word) && nextIs(p, TokenKind::Assign) && !isRedefined(p, peek(p).word))
            fail(p, here(p), quoted(wordText(peek(p).word)) + " is a reserved word");
        else if (beginsAssignment(p))
            parseAssignment(p, module);
        else
            failExpected(p, "an assignment or \"END\"");
        lost = p.failed;
        if (lost)
            recover(p, begin);
    }
}

void parseModule(Parser &p, std::vector<Module *> &modules) {
    const std::uint32_t begin = p.pos;
    auto created = std::make_unique<Module>();
    Module &module = *created;
    module.file = p.file.number;
    std::vector<ModuleWords> &all = p.context.arena.words[p.file.number];
    all.emplace_back();
    all.back().firstToken = begin;
    scanDefinitions(p, all.back());
    p.words = &all.back();
    parseModuleStart(p, module, all.back());
    const bool named = module.name.given();
    if (p.failed && (!named || !findBegin(p))) {
        leaveHeader(p, begin);
        return;
    }
    modules.push_back(&module);
    p.context.arena.modules.push_back(std::move(created));
    parseBody(p, module);
}

} // namespace

std::vector<Module *> parseFile(ParseContext &context, SourceFile &file) {
    std::vector<std::vector<ModuleWords>> &words = context.arena.words;
    words.resize(std::max<std::size_t>(words.size(), file.number + 1));
    words[file.number].clear();
    Parser p{context, file};
    p.end = static_cast<std::uint32_t>(file.tokens.size());
    if (p.end > 0 && file.tokens.back().kind == TokenKind::End)
        --p.end;
    std::vector<Module *> modules;
    if (p.end == 0)
        failExpected(p, "a module");
    while (p.pos < p.end)
        parseModule(p, modules);
    return modules;
}

} // namespace asntree
