#pragma once

#include <string_view>

#include "asntree/syntax.h"
#include "store/ketradef.h"

/* The builtin types, one row for each kind. */

namespace asntree {

struct BuiltinKind {
    TypeKind kind;
    std::string_view text; /* as modules spell it */
    int tag;               /* universal; 0: none of its own */
    MainType mainType;     /* of its records, unless options or values ask for another */
    bool standsIn = false; /* trees have no number for it: the main type is another one's, and the
                              tag is written out */
};

/* Null for what is no builtin type. */
const BuiltinKind *builtinKind(TypeKind kind);

/* What messages call it, builtin or not. */
std::string_view kindText(TypeKind kind);

bool isOpen(TypeKind kind); /* ANY, or a field that no object settles; of a base */
bool isCharacterString(TypeKind kind);
bool isTime(TypeKind kind);
bool isIsoTime(TypeKind kind); /* TIME and the types of 2008 that are subsets of it */

} // namespace asntree
