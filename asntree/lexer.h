#pragma once

#include "asntree/diagnostics.h"
#include "asntree/source.h"

namespace asntree {

/* Turns the text of a file into tokens and directives. Characters and literals that ASN.1 doesn't
   have are reported, and the rest is lexed all the same. Text with NON-BREAKING HYPHENs in names is
   changed to plain ones first. */
void lex(SourceFile &file, Diagnostics &diagnostics);

inline std::string_view textOf(const SourceFile &file, const Token &token) {
    return std::string_view(file.text).substr(token.offset, token.length);
}

/* The characters of a CString, with doubled quotes made one and white space around line ends
   dropped; the digits of a BString or HString without white space, in capitals. */
std::string stringContent(const SourceFile &file, const Token &token);

/* The character at the beginning of a text that isn't empty. */
struct Decoded {
    std::uint32_t character = 0;
    std::size_t length = 0; /* in octets; 0: not UTF-8 */
};
Decoded decodeUtf8(std::string_view text);

/* The names of the modules whose headers a text seems to have, found without reading the whole
   text into tokens, in their order; used to find the files of imports. A name too many is possible
   where a comment holds something like a header, one too few where over 16 KiB of comments stand
   within one. */
std::vector<std::string> moduleHeaders(std::string_view text);

} // namespace asntree
