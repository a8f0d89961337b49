#pragma once

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/ketradef.h"

/* How ASN.1 names become C names: naming and entry options, and the naming data of one definition
   that they add up to. */

/* Naming data of a definition, or of all definitions of a kind. All texts live to the end of the
   run (they stand in the string store or are literals); null means not given. A copy may be kept
   and changed freely. */
struct FixRec {
    const char *pref = nullptr; /* in an entry record the entry symbol */
    const char *name = nullptr; /* takes the place of the ASN.1 name */
    const char *suff = nullptr;
    const char *conv = nullptr; /* conversion letters; in an entry record the category text */
    const char *id = nullptr;   /* from getFixRec the ASN.1 name, null for a nameless node; in a
                                   chain the text of an option from its name on, up to ":" */
    std::int32_t idLen = 0;     /* length of the name in `id` */
};

/* The naming options of one kind. The head holds what was said of all names; one record follows for
   each name that an option gave, in the order of first mention. */
struct FixChain {
    FixRec head;
    std::vector<std::unique_ptr<FixRec>> records;
    std::unordered_map<std::string_view, FixRec *> byText; /* as written */
    std::unordered_map<Text, FixRec *> byName; /* with "_" for "-"; the first of a name */
};

/* Kinds of definitions, for naming and for walks. */
enum WalkKind : int {
    KIND_TYPE = 1,
    KIND_CLASS,
    KIND_VALUE,
    KIND_OBJECT,
    KIND_VALUE_SET,
    KIND_OBJECT_SET,
    KIND_COMPONENT,
    KIND_FIELD,
    KIND_NAMED_NUMBER,
    KIND_COUNT,
};

/* Kinds with a chain of their own; named numbers share that of values. */
inline constexpr int FIX_KINDS = 8;

/* A prefix of naming options and the kind that it selects. */
struct NameOptPref {
    const char *prefix; /* null ends the table */
    int length;
    int kind;
};
extern const NameOptPref nameOptPref[];

/* True if `text` begins with a naming option's name and "="; `row` (may be null) receives its row.
 */
bool isNamingOption(const char *text, const NameOptPref **row);

/* The chain of a kind in a module's options, null for an unknown kind. */
FixChain *fixRecForKind(GlobalOptions *options, int kind);

/* Checks a naming or entry option and stores it in `fix`, unless that is null. `option` is the
   whole text, `value` the part behind "="; both must live to the end of the run. False, and nothing
   is stored, if the syntax is wrong. */
bool getFixOpt(FixChain *fix, const char *option, const char *value);

/* A value cut at the name in front of its first ":"; without one the whole value is `rest`. */
struct FixOptionParts {
    const char *typeName = nullptr;
    std::int32_t typeNameLen = 0;
    const char *rest = nullptr;
};
FixOptionParts splitFixOptionIntoParts(const FixChain *fix, const char *value);

/* The syntax of the two forms. `category` and `symbol` become the places of these parts, `word`
   that of the letter C, N, P or S behind the option's prefix. */
bool parseEntryOption(const char *text, const char **category, const char **symbol);
bool parseNamingOption(const char *option, const char **word);

void updateEntryOption(FixRec *fix, const char *category, const char *symbol);
void updateNamingOption(FixRec *fix, const char *word, const char *value);

/* The record of the name that `name` begins with (up to ":"); appended if the chain has none. Case
   counts, and so does "-" against "_". */
FixRec *findFixRecByEntryTypeName(FixChain *fix, const char *name);
/* The first record of a name, or null; "-" and "_" are equal. */
FixRec *findGlbFixRecByName(const FixChain &fix, const char *name);

/* The naming data of the current VNode (values, objects, named numbers) or TNode (all others): what
   the options say of its kind, of its name, and what is written on it. `id` is null if it has no
   name. Moves the current TedRec. */
void getFixRec(FixRec *dst, int kind);

/* The name that the options make of a definition: prefix, `name` and suffix of the record with "_"
   for
   "-", converted ("HU" makes "MY_TYPE_NAME" of "myTypeName"); without `name` its `id` as it stands,
   cut to `idLen`, or no text at all. */
Text printFixRec(const FixRec &fix);
