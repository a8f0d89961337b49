#pragma once

#include <cstdint>
#include <string_view>

namespace asntree {

/* Kinds of tokens. A reserved word is a token of kind Word; which one it is says `Word`. In the
   syntax of objects reserved words may also be literals, so the text stays at hand for all. */
enum class TokenKind : std::uint8_t {
    End,
    Upper,    /* typereference, modulereference; all capitals too */
    Lower,    /* identifier, valuereference */
    AmpUpper, /* &Field, with the "&" */
    AmpLower, /* &field */
    Word,     /* reserved word */
    Number,
    Real,    /* 1.5, 1E5: digits with a fraction or an exponent */
    BString, /* '01'B */
    HString, /* '0F'H */
    CString, /* "text", with its quotes as written */
    Assign,  /* ::= */
    Range,   /* .. */
    Ellipsis,
    OpenVersion,  /* [[; in WITH SYNTAX it is two brackets */
    CloseVersion, /* ]] */
    OpenBrace,
    CloseBrace,
    OpenParen,
    CloseParen,
    OpenBracket,
    CloseBracket,
    Less,
    Greater,
    Comma,
    Dot,
    Colon,
    Semicolon,
    Equals,
    Bar,
    Caret,
    At,
    Exclamation,
    Star,
    Minus,
    Slash,
    XmlValue, /* behind "::=": <Type> ... </Type>, whole */
    Bad, /* a character that ASN.1 doesn't have; was reported by the lexer */
};

/* The reserved words, in the order of the table of `token.cpp`. */
enum class Word : std::uint8_t {
    None,
    ABSENT,
    ABSTRACT_SYNTAX,
    ALL,
    ANY,
    APPLICATION,
    AUTOMATIC,
    BEGIN,
    BIT,
    BMPString,
    BOOLEAN,
    BY,
    CHARACTER,
    CHOICE,
    CLASS,
    COMPONENT,
    COMPONENTS,
    CONSTRAINED,
    CONTAINING,
    DATE,
    DATE_TIME,
    DEFAULT,
    DEFINED,
    DEFINITIONS,
    DURATION,
    EMBEDDED,
    ENCODED,
    ENCODING_CONTROL,
    END,
    ENUMERATED,
    EXCEPT,
    EXPLICIT,
    EXPORTS,
    EXTENSIBILITY,
    EXTERNAL,
    FALSE,
    FROM,
    GeneralString,
    GeneralizedTime,
    GraphicString,
    IA5String,
    IDENTIFIER,
    IMPLICIT,
    IMPLIED,
    IMPORTS,
    INCLUDES,
    INSTANCE,
    INSTRUCTIONS,
    INTEGER,
    INTERSECTION,
    ISO646String,
    MACRO,
    MAX,
    MIN,
    MINUS_INFINITY,
    NOT_A_NUMBER,
    NULL_,
    NumericString,
    OBJECT,
    OCTET,
    OF,
    OID_IRI,
    OPTIONAL,
    ObjectDescriptor,
    PATTERN,
    PDV,
    PLUS_INFINITY,
    PRESENT,
    PRIVATE,
    PrintableString,
    REAL,
    RELATIVE_OID,
    RELATIVE_OID_IRI,
    SEQUENCE,
    SET,
    SETTINGS,
    SIZE,
    STRING,
    SYNTAX,
    T61String,
    TAGS,
    TIME,
    TIME_OF_DAY,
    TRUE,
    TYPE_IDENTIFIER,
    TeletexString,
    UNION,
    UNIQUE,
    UNIVERSAL,
    UTCTime,
    UTF8String,
    UniversalString,
    VideotexString,
    VisibleString,
    WITH,
};

struct Token {
    TokenKind kind = TokenKind::End;
    Word word = Word::None;
    std::uint32_t offset = 0; /* in the file's text */
    std::uint32_t length = 0;
};

/* The reserved word that a text is, or None. */
Word wordOf(std::string_view text);
/* The text of a reserved word ("NULL" for NULL_). */
std::string_view wordText(Word word);
/* What a kind is called in messages: "\"::=\"", "a number", "the end of the file" ... */
std::string_view kindText(TokenKind kind);

} // namespace asntree
