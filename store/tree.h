#pragma once

#include <memory>

#include "store/ketravar.h"

/* Loading: from ".stx" files to module records. */

/* What loading needs of the rooms below; the tool sets all of them before it starts. A program that
   only reads trees may leave them null: its modules then have no options and no generator's record.
 */
struct TreeHooks {
    /* A new block of options for a module that has just been made. */
    std::shared_ptr<GlobalOptions> (*newOptions)() = nullptr;
    /* A new generator's record for it. */
    std::shared_ptr<BEModMetaRec> (*newMetaRec)() = nullptr;
    /* Settles the options of a module whose header has just been read and is the current MNode:
       defaults, then the options stored in the tree. */
    void (*settleStoredOptions)(ModRec *module) = nullptr;
};
extern TreeHooks treeHooks;

/* Appends an empty record; `named` says that it was named on the command line, which only records
   before all others may be. */
ModRec *appendModRec(bool named);

/* Reads the trees of all named modules with all that they import. Fatal errors 15, 16 and 17, with
   the file prefix of the named module under whose imports the failure happened. */
void readAllSyntaxTrees();
/* Drops records that were made by an option and that no import reached. */
void removeUnreferencedModuleRecords();
/* Work fields of all modules, once their trees are read. Fatal error 13 without any record. */
void initBackendVars();

/* The record with this generation prefix, or a new one with the three texts at the end of the list.
 */
ModRec *findOrCreateModRec(const char *filePrefix, const char *genPrefix, const char *moduleName);
/* An empty import with this name, which must be interned, at the end of the list. */
PicRec *createPicRec(PicList &imports, const char *name);

/* The test of a tree's header, the current MNode; `message` is set if the version is wrong. */
bool checkMNode(Text *message);

/* The local time of now. */
void getTimeStamp(TimeStamp *stamp);

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
