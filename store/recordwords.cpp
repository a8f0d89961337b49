#include "store/recordwords.h"

#include "store/typetable.h"

/* Words for numbers of records. A number outside its table still gets a text, since people look
   at broken trees too. */

const char *typeWord(int mainType) {
    if (mainType < 0 || mainType >= TYP_COUNT)
        return "?";
    return typeArr[mainType].shown != nullptr ? typeArr[mainType].shown : typeArr[mainType].text;
}

const char *formWord(int form) {
    constexpr const char *words[] = {
        "none",  "bool",   "ui8",     "ui16",    "ui32",  "ui64",  "i8",     "i16",   "i32",
        "i64",   "real32", "real64",  "real128", "stas0", "stas8", "stas16", "stas",  "dyns0",
        "dyns8", "dyns16", "dyns",    "list",    "frm",   "null",  "stru",   "any",   "embpdv",
        "obji",  "comt",   "ext1990", "ext1994", "open",  "bmp0",  "bmp8",   "bmp16", "bmp"};
    static_assert(std::size(words) == VF_COUNT);
    return form >= 0 && form < VF_COUNT ? words[form] : "?";
}

Text numberText(sint64 number) {
    if (i64ismin(number))
        return "MIN";
    return i64ismax(number) ? "MAX" : i64tostr(number);
}

std::span<const BitWord> typeOptionWords() {
    static constexpr BitWord words[] = {
        {optionMask(OPT_SKIPPED), "skipped"},
        {optionMask(OPT_HOME), "home"},
        {optionMask(OPT_POINTER), "pointer"},
        {optionMask(OPT_COMPS_AS_POINTERS), "components as pointers"},
        {optionMask(OPT_COMPS_POINTER), "components by pointer"},
        {optionMask(OPT_FRAME), "frame"},
        {optionMask(OPT_LIST_HOME_STORED), "elements as homes"},
        {optionMask(OPT_LIST_HOME), "list of homes"},
        {optionMask(OPT_DYNAMIC_ARRAY), "dynamic array"},
        {optionMask(OPT_NORMALISE_TRUE), "TRUE is 0xFF"},
        {optionMask(OPT_NEAR), "near"},
        {optionMask(OPT_SAVE_EXTENSIONS), "saves extensions"},
    };
    return words;
}

std::span<const BitWord> typeFlagWords() {
    static constexpr BitWord words[] = {
        {TYPE_HAS_OPTIONAL, "has optional"}, {TYPE_HAS_UNTAGGED, "has untagged"},
        {TYPE_RECURSIVE, "recursive"},       {TYPE_HAS_MANDATORY, "has mandatory"},
        {TYPE_EXTENSIBLE, "extensible"},     {TYPE_AUTOMATIC_TAGS, "automatic tags"},
        {TYPE_IGNORABLE, "ignorable"},
    };
    return words;
}

std::span<const BitWord> entryFunctionWords() {
    static constexpr BitWord words[] = {{4, "enc"}, {8, "dec"}, {16, "ask"}, {32, "pri"}};
    return words;
}
