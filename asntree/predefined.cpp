#include "asntree/predefined.h"

#include "asntree/names.h"
#include "store/ketradef.h"

namespace asntree {

namespace {

/* The names of associated types are no valid ASN.1 on purpose of nobody: a module may use the same
   ones, since names of this module are seen only by who asks for them. */
constexpr const char *text = R"(
ISO8824 DEFINITIONS AUTOMATIC TAGS ::= BEGIN
TYPE-IDENTIFIER ::= CLASS {
    &id OBJECT IDENTIFIER UNIQUE,
    &Type
} WITH SYNTAX { &Type IDENTIFIED BY &id }
ABSTRACT-SYNTAX ::= CLASS {
    &id OBJECT IDENTIFIER UNIQUE,
    &Type,
    &property BIT STRING { handles-invalid-encodings(0) } DEFAULT {}
} WITH SYNTAX { &Type IDENTIFIED BY &id [HAS PROPERTY &property] }
Identification ::= CHOICE {
    syntaxes SEQUENCE { abstract OBJECT IDENTIFIER, transfer OBJECT IDENTIFIER },
    syntax OBJECT IDENTIFIER,
    presentation-context-id INTEGER,
    context-negotiation SEQUENCE {
        presentation-context-id INTEGER, transfer-syntax OBJECT IDENTIFIER },
    transfer-syntax OBJECT IDENTIFIER,
    fixed NULL
}
External1994 ::= SEQUENCE {
    identification Identification,
    data-value-descriptor ObjectDescriptor OPTIONAL,
    data-value OCTET STRING
}
External1990 ::= SEQUENCE {
    direct-reference OBJECT IDENTIFIER OPTIONAL,
    indirect-reference INTEGER OPTIONAL,
    data-value-descriptor ObjectDescriptor OPTIONAL,
    encoding CHOICE {
        single-ASN1-type ANY, octet-aligned OCTET STRING, arbitrary BIT STRING }
}
EmbeddedPdv ::= SEQUENCE {
    identification Identification,
    data-value-descriptor ObjectDescriptor OPTIONAL,
    data-value OCTET STRING
}
CharacterStringValue ::= SEQUENCE {
    identification Identification,
    data-value-descriptor ObjectDescriptor OPTIONAL,
    string-value OCTET STRING
}
InstanceOf ::= SEQUENCE { type-id OBJECT IDENTIFIER, value [0] ANY }
RealValue ::= SEQUENCE { mantissa INTEGER, base INTEGER (2 | 10), exponent INTEGER }
END
)";

} // namespace

void addPredefinedModule(Compilation &c) {
    SourceFile *file = addSource(c.sources, "predefined", text);
    lex(*file, c.diagnostics);
    ParseContext parsing = c.parsing();
    for (Module *module : parseFile(parsing, *file))
        addModule(c, module)->predefined = true;
}

} // namespace asntree
