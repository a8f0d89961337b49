#include <algorithm>

#include "asntree/parsemodule.h"
#include "asntree/parsing.h"

namespace asntree {

namespace {

/* --- the header --- */

void parseTagDefault(Parser &p, Module &module) {
    module.tagsWritten = true;
    if (takeWord(p, Word::AUTOMATIC))
        module.tags = TagDefault::Automatic;
    else if (takeWord(p, Word::IMPLICIT))
        module.tags = TagDefault::Implicit;
    else if (takeWord(p, Word::EXPLICIT))
        module.tags = TagDefault::Explicit;
    expectWord(p, Word::TAGS);
}

bool atTagDefault(const Parser &p) {
    return atWord(p, Word::AUTOMATIC) || atWord(p, Word::IMPLICIT) || atWord(p, Word::EXPLICIT);
}

void parseDefaults(Parser &p, Module &module, ModuleWords &words) {
    if (at(p, TokenKind::Upper) && peek(p, 1).word == Word::INSTRUCTIONS) {
        words.otherInstructions = nameHere(p).text != "TAG";
        if (words.otherInstructions)
            warning(p.context.diagnostics, here(p), "encoding instructions are read over");
        advance(p);
        advance(p);
    }
    if (atTagDefault(p))
        parseTagDefault(p, module);
    if (takeWord(p, Word::EXTENSIBILITY)) {
        module.extensibilityImplied = true;
        expectWord(p, Word::IMPLIED);
    }
    if (atTagDefault(p) && !module.tagsWritten) {
        slip(p.context.diagnostics, here(p), "the tag default stands in front of EXTENSIBILITY");
        parseTagDefault(p, module);
    }
}

/* Name { oid } "iri" DEFINITIONS ... ::= BEGIN */
void parseHeader(Parser &p, Module &module, ModuleWords &words) {
    if (at(p, TokenKind::Lower))
        complain(p, here(p), "the name of a module begins with a capital letter");
    if (!at(p, TokenKind::Upper) && !at(p, TokenKind::Lower) && !at(p, TokenKind::Word)) {
        failExpected(p, "the name of a module");
        return;
    }
    module.name = takeName(p);
    if (at(p, TokenKind::OpenBrace)) {
        const Place place = here(p);
        module.identifier = skipBraces(p);
        if (module.identifier.empty())
            complain(p, place, "the object identifier of a module has one arc at least");
    }
    if (at(p, TokenKind::CString)) {
        module.iri = textOf(p.file, peek(p));
        if (module.iri.size() < 3 || module.iri[1] != '/')
            complain(p, here(p), "the identifier of a module in letters begins with \"/\"");
        advance(p);
    }
    expectWord(p, Word::DEFINITIONS);
    parseDefaults(p, module, words);
    expect(p, TokenKind::Assign);
    expectWord(p, Word::BEGIN);
}

/* --- EXPORTS and IMPORTS --- */

bool atSymbol(const Parser &p) {
    const Token &token = peek(p);
    if (token.kind == TokenKind::Word)
        return token.word != Word::FROM && token.word != Word::EXPORTS &&
               token.word != Word::IMPORTS && token.word != Word::END;
    return token.kind == TokenKind::Upper || token.kind == TokenKind::Lower;
}

/* One name, with {} or without. */
bool parseSymbol(Parser &p, std::vector<Name> &symbols) {
    if (!atSymbol(p)) {
        failExpected(p, "a name");
        return false;
    }
    const Place place = here(p);
    symbols.push_back(takeName(p));
    if (at(p, TokenKind::OpenBrace) && !skipBraces(p).empty())
        complain(p, place, "no parameters are written for what is imported or exported");
    if (at(p, TokenKind::Assign))
        fail(p, place, "\";\" is missing in front of " + quoted(symbols.back().text));
    return !p.failed;
}

void parseSymbols(Parser &p, std::vector<Name> &symbols) {
    while (parseSymbol(p, symbols)) {
        if (!take(p, TokenKind::Comma)) {
            if (atSymbol(p) && (nextIs(p, TokenKind::Comma) || peek(p, 1).word == Word::FROM)) {
                complain(p, behind(p), "\",\" is missing between two names");
                continue;
            }
            return;
        }
        if (at(p, TokenKind::Semicolon) || atWord(p, Word::FROM)) {
            slip(p.context.diagnostics, {p.file.number, p.file.tokens[p.pos - 1].offset},
                 "a comma too many at the end of a list");
            return;
        }
    }
}

void parseExports(Parser &p, Module &module) {
    advance(p);
    module.exportsMode = ExportsMode::List;
    if (atWord(p, Word::ALL)) {
        module.exportsMode = ExportsMode::All;
        advance(p);
    } else if (!at(p, TokenKind::Semicolon)) {
        parseSymbols(p, module.exports);
    }
    expect(p, TokenKind::Semicolon);
}

/* A value reference behind the name of a module, and not the first symbol of the next list. */
bool atIdentifierReference(const Parser &p) {
    if (!at(p, TokenKind::Lower))
        return at(p, TokenKind::Upper) && nextIs(p, TokenKind::Dot);
    const Token &second = peek(p, 1);
    return second.kind != TokenKind::Comma && second.kind != TokenKind::OpenBrace &&
           second.word != Word::FROM && second.kind != TokenKind::Assign;
}

void parseSelection(Parser &p, ImportFrom &import) {
    if (!takeWord(p, Word::WITH))
        return;
    const std::string_view option = nameHere(p).text;
    import.successors = option == "SUCCESSORS";
    import.descendants = option == "DESCENDANTS";
    if (import.successors || import.descendants)
        advance(p);
    else
        failExpected(p, "SUCCESSORS or DESCENDANTS");
}

void parseImport(Parser &p, Module &module) {
    ImportFrom import;
    parseSymbols(p, import.symbols);
    expectWord(p, Word::FROM);
    if (!at(p, TokenKind::Upper) && !at(p, TokenKind::Word))
        failExpected(p, "the name of a module");
    import.module = takeName(p);
    if (at(p, TokenKind::OpenBrace)) {
        import.identifier = skipBraces(p);
    } else if (atIdentifierReference(p)) {
        Reference ref;
        std::vector<Name> fields;
        std::vector<bool> fieldIsUpper;
        parseReference(p, ref, fields, fieldIsUpper);
        import.identifierRef = ref.name;
    }
    parseSelection(p, import);
    if (import.module.given())
        module.imports.push_back(std::move(import));
}

void parseImports(Parser &p, Module &module) {
    advance(p);
    while (!p.failed && !take(p, TokenKind::Semicolon)) {
        parseImport(p, module);
        if (at(p, TokenKind::Comma)) {
            slip(p.context.diagnostics, here(p), "no comma stands behind the name of a module");
            advance(p);
        } else if (!at(p, TokenKind::Semicolon) && !atSymbol(p)) {
            failExpected(p, "\";\" or another name");
        }
    }
}

/* After a mistake in the list at `begin`: to what follows the ";", or to the first assignment. */
void leaveList(Parser &p, std::uint32_t begin) {
    if (!p.failed)
        return;
    p.failed = false;
    const std::uint32_t assignment = nextAssignment(p, p.pos, begin + 1);
    std::uint32_t i = p.pos;
    while (i < assignment && p.file.tokens[i].kind != TokenKind::Semicolon)
        ++i;
    p.pos = i < assignment ? i + 1 : assignment;
}

void noteImports(const Module &module, ModuleWords &words) {
    for (const ImportFrom &import : module.imports) {
        for (const Name &symbol : import.symbols) {
            const Word word = wordOf(symbol.text);
            if (word != Word::None)
                redefine(words, word);
            else if (isAllCapitals(symbol.text))
                words.macros.push_back(symbol.text);
        }
    }
    std::sort(words.macros.begin(), words.macros.end());
}

} // namespace

void parseModuleStart(Parser &p, Module &module, ModuleWords &words) {
    parseHeader(p, module, words);
    if (p.failed)
        return;
    p.lastAssign = p.pos;
    bool exported = false;
    bool imported = false;
    while (!p.failed && (atWord(p, Word::EXPORTS) || atWord(p, Word::IMPORTS))) {
        const std::uint32_t begin = p.pos;
        const Place place = here(p);
        const bool exports = atWord(p, Word::EXPORTS);
        if (exports ? exported : imported)
            complain(p, place, exports ? "a second EXPORTS" : "a second IMPORTS");
        else if (exports && imported)
            slip(p.context.diagnostics, place, "EXPORTS stands in front of IMPORTS");
        (exports ? exported : imported) = true;
        if (exports)
            parseExports(p, module);
        else
            parseImports(p, module);
        leaveList(p, begin);
        p.softError = NO_TOKEN;
    }
    noteImports(module, words);
}

} // namespace asntree
