#pragma once

#include "store/ketradef.h"

/* What is known of each kind of type without a tree: its universal tag, its words, what sort of
   string it is. What C makes of builtin types stands in cbet/builtintypes.h. */

/* What the value of a string type consists of: bits, octets, or characters of so many bits. */
enum class StringSort : std::uint8_t { NONE, BITS, OCTETS, TEXT8, TEXT16, TEXT32 };

struct TypeRow {
    MainType mainType;
    static constexpr int tagClass = TAG_UNI; /* of all kinds */
    int tagNumber;                           /* below 0: the kind has no tag of its own */
    const char *word;                        /* TYP_... */
    const char *text;                        /* ASN.1 name; empty for kinds without one */
    StringSort string = StringSort::NONE;
    const char *shown = nullptr; /* the kind as people read it, where `text` isn't that */
};

/* One row for each main type, in their order. */
inline constexpr TypeRow typeArr[] = {
    {TYP_BOOLEAN, 1, "TYP_BOOLEAN", "BOOLEAN"},
    {TYP_INTEGER, 2, "TYP_INTEGER", "INTEGER"},
    {TYP_ENUM, 10, "TYP_ENUM", "ENUMERATED"},
    {TYP_REAL, 9, "TYP_REAL", "REAL"},
    {TYP_BITSTR, 3, "TYP_BITSTR", "BIT STRING", StringSort::BITS},
    {TYP_OCTSTR, 4, "TYP_OCTSTR", "OCTET STRING", StringSort::OCTETS},
    {TYP_NULL, 5, "TYP_NULL", "NULL"},
    {TYP_SEQ, 16, "TYP_SEQ", "SEQUENCE"},
    {TYP_SEQOF, 16, "TYP_SEQOF", "SEQUENCE OF"},
    {TYP_SET, 17, "TYP_SET", "SET"},
    {TYP_SETOF, 17, "TYP_SETOF", "SET OF"},
    {TYP_CHOICE, -2, "TYP_CHOICE", "CHOICE"},
    {TYP_ANY, -3, "TYP_ANY", "ANY"},
    {TYP_EMB_PDV, 11, "TYP_EMB_PDV", "EMBEDDED PDV"},
    {TYP_OBJID, 6, "TYP_OBJID", "OBJECT IDENTIFIER"},
    {TYP_NUMSTR, 18, "TYP_NUMSTR", "NumericString", StringSort::TEXT8},
    {TYP_PRISTR, 19, "TYP_PRISTR", "PrintableString", StringSort::TEXT8},
    {TYP_TELSTR, 20, "TYP_TELSTR", "TeletexString", StringSort::TEXT8},
    {TYP_VIDSTR, 21, "TYP_VIDSTR", "VideotexString", StringSort::TEXT8},
    {TYP_VISSTR, 26, "TYP_VISSTR", "VisibleString", StringSort::TEXT8},
    {TYP_IA5STR, 22, "TYP_IA5STR", "IA5String", StringSort::TEXT8},
    {TYP_GRASTR, 25, "TYP_GRASTR", "GraphicString", StringSort::TEXT8},
    {TYP_GENSTR, 27, "TYP_GENSTR", "GeneralString", StringSort::TEXT8},
    {TYP_BMPSTR, 30, "TYP_BMPSTR", "BMPString", StringSort::TEXT16},
    {TYP_UNISTR, 28, "TYP_UNISTR", "UniversalString", StringSort::TEXT32},
    {TYP_CHASTR, 29, "TYP_CHASTR", "CHARACTER STRING"},
    {TYP_GENTIME, 24, "TYP_GENTIME", "GeneralizedTime"},
    {TYP_UTCTIME, 23, "TYP_UTCTIME", "UTCTime"},
    {TYP_EXTERNAL_1990, 8, "TYP_EXTERNAL", "EXTERNAL", StringSort::NONE, "EXTERNAL (1990)"},
    {TYP_EXTERNAL_1994, 8, "TYP_EXTERNAL", "EXTERNAL"},
    {TYP_OBJDESCR, 7, "TYP_OBJDESCR", "ObjectDescriptor", StringSort::TEXT8},
    {TYP_INSTANCE_OF, 8, "TYP_INSTANCE_OF", "InstanceOfType", StringSort::NONE,
     "INSTANCE OF"},
    {TYP_SYNONYM, -4, "TYP_SYNONYM", "", StringSort::NONE, "reference"},
    {TYP_EXTENSION_MARKER, -5, "TYP_EXTENSION_MARKER", "", StringSort::NONE, "..."},
    {TYP_SELECTION, -9, "TYP_SELECTION", "Selection type", StringSort::NONE, "selection"},
    {TYP_FIELDLIST, -8, "TYP_FIELDLIST", "", StringSort::NONE, "field"},
    {TYP_OPEN, -7, "TYP_OPEN", "Open type", StringSort::NONE, "open type"},
    {TYP_CLASS, -6, "TYP_CLASS", "CLASS"},
    {TYP_TYPE_ID, -6, "TYP_TYPE_ID", "TYPE-IDENTIFIER"},
    {TYP_ABSTR_STX, -6, "TYP_ABSTR_STX", "ABSTRACT-SYNTAX"},
    {TYP_NONE, -10, "TYP_NONE", "", StringSort::NONE, "none"},
};

constexpr bool isTypeTableInOrder() {
    for (int i = 0; i < TYP_COUNT; ++i)
        if (typeArr[i].mainType != i)
            return false;
    return true;
}
static_assert(std::size(typeArr) == TYP_COUNT && isTypeTableInOrder());

/* The row of a main type; that of TYP_NONE for numbers outside the table. */
constexpr const TypeRow &typeRow(int mainType) {
    return typeArr[mainType >= 0 && mainType < TYP_COUNT ? mainType : TYP_NONE];
}
