#pragma once

#include "store/ketravar.h"

/* Strings of modules. Each text is stored once for the whole run, so equal texts of one width are
   one pointer, whichever module they belong to. */

/* The text of a string number; its sign has no meaning, EMPTY_STRI is the empty text. Fatal error 9
   without a record, so a field is tested against 0 first. */
const char *getStri(ModRec *module, RecNr number);
/* The same of a field that may be without a text: 0 is the empty one. */
const char *optionalStri(ModRec *module, RecNr number);
const char16_t *getStri16(ModRec *module, RecNr number);
const char32_t *getStri32(ModRec *module, RecNr number);

/* The number of a text in a module; a new text is added. Fatal error 10 for a null module or text.
 */
RecNr putStri(ModRec *module, const char *text);

/* The single copy of a text; lives to the end of the run. */
const char *allocateUniqStri(std::string_view text);

/* Adds a record as a tree has it, without looking for an equal one. */
void appendStri(ModRec *module, std::string_view text);
void appendStri16(ModRec *module, std::u16string_view text);
void appendStri32(ModRec *module, std::u32string_view text);
