#pragma once

#include "store/ketravar.h"

/* Reading of one ".stx" file into the records of its module. */

enum TreeStatus : int {
    TREE_READ = 0,
    TREE_INCONSISTENT = 1001,
    TREE_MISSING = 1002, /* the file can't be opened */
    TREE_INVALID = 1003, /* it is too short, or its header or a string count is wrong */
};

/* Fills the record tables of `module` from the file that its generation prefix names, and makes its
   header the current MNode. `message` is emptied, and set if the header has a wrong version. The
   file is closed in any case; fatal error 8 if that fails. */
TreeStatus readTree(ModRec *module, Text *message);
