#include "model/typetables.h"


/* Words and C types by number. Rows stand in the order of the numbers in store/ketradef.h. */

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

const char *targetLangType(int valueForm) {
    const bool inTable = valueForm >= 0 && valueForm < VF_COUNT;
    const char *word = inTable ? defaultCTypeArr[valueForm] : nullptr;
    return word == nullptr ? "?!?" : word;
}
