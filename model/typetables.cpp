#include "model/typetables.h"

#include "model/backvar.h"

const TypeRow typeArr[TYP_COUNT] = {
    {TAG_UNI, 1, false, "TYP_BOOLEAN", "BOOLEAN"},
    {TAG_UNI, 2, false, "TYP_INTEGER", "INTEGER"},
    {TAG_UNI, 10, false, "TYP_ENUM", "ENUMERATED"},
    {TAG_UNI, 9, false, "TYP_REAL", "REAL"},
    {TAG_UNI, 3, false, "TYP_BITSTR", "BIT STRING"},
    {TAG_UNI, 4, false, "TYP_OCTSTR", "OCTET STRING"},
    {TAG_UNI, 5, false, "TYP_NULL", "NULL"},
    {TAG_UNI, 16, true, "TYP_SEQ", "SEQUENCE"},
    {TAG_UNI, 16, true, "TYP_SEQOF", "SEQUENCE OF"},
    {TAG_UNI, 17, true, "TYP_SET", "SET"},
    {TAG_UNI, 17, true, "TYP_SETOF", "SET OF"},
    {TAG_UNI, -2, true, "TYP_CHOICE", "CHOICE"},
    {TAG_UNI, -3, false, "TYP_ANY", "ANY"},
    {TAG_UNI, 11, false, "TYP_EMB_PDV", "EMBEDDED PDV"},
    {TAG_UNI, 6, false, "TYP_OBJID", "OBJECT IDENTIFIER"},
    {TAG_UNI, 18, false, "TYP_NUMSTR", "NumericString"},
    {TAG_UNI, 19, false, "TYP_PRISTR", "PrintableString"},
    {TAG_UNI, 20, false, "TYP_TELSTR", "TeletexString"},
    {TAG_UNI, 21, false, "TYP_VIDSTR", "VideotexString"},
    {TAG_UNI, 26, false, "TYP_VISSTR", "VisibleString"},
    {TAG_UNI, 22, false, "TYP_IA5STR", "IA5String"},
    {TAG_UNI, 25, false, "TYP_GRASTR", "GraphicString"},
    {TAG_UNI, 27, false, "TYP_GENSTR", "GeneralString"},
    {TAG_UNI, 30, false, "TYP_BMPSTR", "BMPString"},
    {TAG_UNI, 28, false, "TYP_UNISTR", "UniversalString"},
    {TAG_UNI, 29, false, "TYP_CHASTR", "CHARACTER STRING"},
    {TAG_UNI, 24, false, "TYP_GENTIME", "GeneralizedTime"},
    {TAG_UNI, 23, false, "TYP_UTCTIME", "UTCTime"},
    {TAG_UNI, 8, false, "TYP_EXTERNAL", "EXTERNAL"}, /* of 1990 */
    {TAG_UNI, 8, false, "TYP_EXTERNAL", "EXTERNAL"}, /* of 1994 */
    {TAG_UNI, 7, false, "TYP_OBJDESCR", "ObjectDescriptor"},
    {TAG_UNI, 8, true, "TYP_INSTANCE_OF", "InstanceOfType"},
    {TAG_UNI, -4, false, "TYP_SYNONYM", ""},
    {TAG_UNI, -5, false, "TYP_EXTENSION_MARKER", ""},
    {TAG_UNI, -9, true, "TYP_SELECTION", "Selection type"},
    {TAG_UNI, -8, false, "TYP_FIELDLIST", ""},
    {TAG_UNI, -7, false, "TYP_OPEN", "Open type"},
    {TAG_UNI, -6, true, "TYP_CLASS", "CLASS"},
    {TAG_UNI, -6, false, "TYP_TYPE_ID", "TYPE-IDENTIFIER"},
    {TAG_UNI, -6, false, "TYP_ABSTR_STX", "ABSTRACT-SYNTAX"},
    {TAG_UNI, -10, false, "TYP_NONE", ""},
};

const TypeRow &typeRow(int mainType) {
    return typeArr[mainType >= 0 && mainType < TYP_COUNT ? mainType : TYP_NONE];
}

const char *const compStatusArr[COMP_STATUS_WORDS] = {
    "TCS_MANDATORY", "TCS_OPTIONAL", "TCS_COMPOF", "TCS_CHOICE",
    "TCS_MULTIPLE",  "TCS_HEADER",   "TCS_FORMAL",
};

const char *const vfIdArr[VF_COUNT] = {
    "VF_NONE",          "VF_BOOL",    "VF_UI8",     "VF_UI16",    "VF_UI32",
    "VF_UI64",          "VF_I8",      "VF_I16",     "VF_I32",     "VF_I64",
    "VF_REAL32",        "VF_REAL64",  "VF_REAL128", "VF_STAS0",   "VF_STAS8",
    "VF_STAS16",        "VF_STAS",    "VF_DYNS0",   "VF_DYNS8",   "VF_DYNS16",
    "VF_DYNS",          "VF_LIST",    "VF_FRM",     "VF_NULL",    "VF_STRU",
    "VF_ANY",           "VF_EMB_PDV", "VF_OBJI",    "VF_COMT",    "VF_EXTERNAL_1990",
    "VF_EXTERNAL_1994", "VF_OPEN",    "VF_BMPSTR0", "VF_BMPSTR8", "VF_BMPSTR16",
    "VF_BMPSTR",
};

const char *const defaultCTypeArr[VF_COUNT] = {
    "/* VF_NONE */",
    "BOOLE",
    "uint8",
    "uint16",
    "uint32",
    "uint64",
    "sint8",
    "sint16",
    "sint32",
    "sint64",
    "REAL32",
    "REAL64",
    "REAL128",
    nullptr, /* VF_STAS0 and the other static strings */
    nullptr,
    nullptr,
    nullptr,
    "DYNSTR0",
    "DYNSTR8",
    "DYNSTR16",
    "DYNSTR",
    "LIST",
    "FRAME_PTR",
    "NULLTYPE",
    nullptr, /* VF_STRU */
    "ANY",
    nullptr, /* VF_EMB_PDV */
    "OBJECTIDENTIFIER",
    "DATETIMEZ",
    "EXTERNAL_1990",
    "EXTERNAL_1994",
    "OPENTYPE",
    "ASN_BMPString0",
    "ASN_BMPString8",
    "ASN_BMPString16",
    "ASN_BMPString",
};

const char *const asnhomeMemberArr[VF_COUNT] = {
    "/* VF_NONE */",
    "bool",
    "ui8",
    "ui16",
    "ui32",
    "ui64",
    "i8",
    "i16",
    "i32",
    "i64",
    "real32",
    "real64",
    "real128",
    "stas0",
    "stas8",
    "stas16",
    "stas",
    "dyns0",
    "dyns8",
    "dyns16",
    "dyns",
    "list",
    "frm",
    "null",
    "stru",
    "any",
    nullptr, /* VF_EMB_PDV */
    "obji",
    "datetime",
    "ext1990",
    "ext1994",
    "openType",
    "bmpstr0",
    "bmpstr8",
    "bmpstr16",
    "bmpstr",
};

const char *const *targetLangTypeArr = defaultCTypeArr;

const char *targetLangType(int valueForm) {
    const bool inTable = valueForm >= 0 && valueForm < VF_COUNT;
    const char *word = inTable ? targetLangTypeArr[valueForm] : nullptr;
    return word == nullptr ? "?!?" : word;
}
