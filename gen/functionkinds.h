#pragma once

/* The four kinds of generated function as options and trees number them. */

/* Bits of TNode.entryFlags: the functions that an entry type gets. */
enum EntryBit : int {
    ENTRY_ENCODING = 2,
    ENTRY_DECODING = 3,
    ENTRY_ASKING = 4,
    ENTRY_PRINTING = 5,
};

/* Places of embedded text in front of and behind the functions of a kind. */
enum FunctionPlace : int {
    PLACE_BEFORE_ENCODING = 1,
    PLACE_BEFORE_DECODING = 2,
    PLACE_BEFORE_ASKING = 3,
    PLACE_BEFORE_PRINTING = 4,
    PLACE_AFTER_ENCODING = 6,
    PLACE_AFTER_DECODING = 7,
    PLACE_AFTER_ASKING = 8,
    PLACE_AFTER_PRINTING = 9,
};
