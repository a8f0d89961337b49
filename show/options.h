#pragma once

struct ModRec;

/* The options of a module, what became of each, and those in force. */

/* From here on it is noted what becomes of options. Called once, when the other hooks are set and
   before the command line is read. */
void noteOptions();
/* The options that the tree and the command line gave, in their order, then each general option as
   it is in force. */
void showOptions(ModRec *module);
