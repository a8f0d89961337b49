#pragma once

#include "asntree/compilation.h"
#include "asntree/numberset.h"
#include "asntree/options.h"
#include "asntree/words.h"
#include "store/ketradef.h"

/* How values are held in generated C: the choices that the format leaves to the compiler. */

namespace asntree {

struct Form {
    ValueForm value = VF_NONE;
    ValueForm control = VF_NONE;
    std::uint32_t options = 0; /* bits of TNode.optionBits that belong to it */
};

/* What decides a form beside the kind of the type. `words` may be null. */
struct FormFacts {
    const ModuleSettings &settings;
    const Words *words = nullptr;
    NumberSet extent;  /* the numbers of an INTEGER or ENUMERATED, the sizes of a string or list */
    int components = 0; /* as a walk shows them */
    bool lastIsMandatory = false;
};

/* True if a set of numbers doesn't fit 64 bits, with a sign or without. */
bool exceeds64Bits(const NumberSet &numbers);

/* The form of a builtin type of `mainType`; none for references, classes and markers. */
Form formOf(int mainType, const FormFacts &facts);

} // namespace asntree
