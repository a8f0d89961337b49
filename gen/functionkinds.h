#pragma once

#include "cbet/typefuncinfo.h"

/* The four kinds of generated function as options and trees number them. */

/* Bits of TNode.entryFlags: the functions that an entry type gets. */
enum EntryBit : int {
    ENTRY_ENCODING = 2,
    ENTRY_DECODING = 3,
    ENTRY_ASKING = 4,
    ENTRY_PRINTING = 5,
};

/* Sets what the kind alone decides: files, entry bit, places of embedded text, context and order of
   the walk. The generator adds its names and call-backs; all else is as cInitTypeFuncInfo leaves
   it.
 */
void initFunctionKind(TypeFuncInfo *info, FuncKind kind);
