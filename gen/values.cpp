#include "gen/generators.h"

#include "base/files.h"
#include "cbet/builtintypes.h"
#include "cbet/constants.h"
#include "cbet/names.h"
#include "gen/fileset.h"
#include "gen/messages.h"
#include "gen/meta.h"
#include "model/stamps.h"
#include "model/typequeries.h"
#include "model/valuequeries.h"
#include "model/valuetexts.h"
#include "model/valuewalk.h"
#include "project/ketratavi.h"
#include "store/ketradef.h"

namespace {

/* #define name  */
void genValuePrefix(AsnValue *value) {
    AsnModule *module = getModuleOf(value);
    if (!getMetaIntroPrinted(module)) {
        putF(fiDef, "\n/* values */\n\n");
        setMetaIntroPrinted(module, true);
    }
    const Text name = cLoneName(getIdOf(value), module);
    putF(fiDef, "#define ", name, " ");
    taviUseTypeNodeOfValue(value);
    taviAddItem(ITEM_DEFINE, fiDef, {name});
}

/* One line: "#define", the value's name, and the three texts (each may be null), never broken. */
void genValue(AsnValue *value, const char *before, const char *text, const char *after) {
    genValuePrefix(value);
    putUnbroken(fiDef, before, text, after, "\n");
}

void genStringDefine(AsnValue *value, int, const char *text) {
    genValue(value, "\"", cStringText(text).c_str(), "\"");
}

void genBinaryDefine(AsnValue *value, int, const char *text) {
    genValue(value, "\"'", text, "'B\"");
}

/* A BIT STRING that was written in hexadecimal keeps the digits that it was written with; an OCTET
   STRING has whole octets. */
void genHexDefine(AsnValue *value, int length, const char *text) {
    Text digits = text;
    if (getTypeMainType(getTypeOfValue(value)) == TYP_BITSTR)
        digits.resize(static_cast<std::size_t>(length));
    genValue(value, "\"'", digits.c_str(), "'H\"");
}

/* #define id \
     "{1 2 3}" */
void genObjectIdentifierDefine(AsnValue *value) {
    if (getNrOfObjectIdentifierComps(value) == 0) {
        /* A "#define" that goes on to a next line must not swallow another one. */
        const Text message =
            "No define for " + getRefOf(value) + ": its object identifier is not resolved.";
        bugInTool(message.c_str());
        return;
    }
    genValuePrefix(value);
    putF(fiDef, "\\\n");
    /* In one piece: a line may not end within it. */
    putF(fiDef, "  \"{", objectIdentifierValueStri(value, nullptr, nullptr, nullptr), "}\"\n");
}

void genRootValue(AsnValue *value, int) {
    switch (getValueMainType(value)) {
    case TYP_BOOLEAN:
        genValue(value, nullptr, booleanValueStri(value).c_str(), nullptr);
        break;
    case TYP_INTEGER:
    case TYP_ENUM:
        genValue(value, nullptr, cIntegerValue(value).c_str(), nullptr);
        break;
    case TYP_REAL:
        genValue(value, nullptr, doubleRealValueStri(value).c_str(), nullptr);
        break;
    case TYP_BITSTR:
        forBitStringValueB(value, genBinaryDefine);
        break;
    case TYP_OCTSTR:
        forOctetStringValue(value, genHexDefine);
        break;
    case TYP_OBJID:
        genObjectIdentifierDefine(value);
        break;
    case TYP_GENTIME:
    case TYP_UTCTIME:
        forCharacterStringValue(value, genStringDefine);
        break;
    default:
        if (cHasTextConstants(getValueMainType(value)))
            forCharacterStringValue(value, genStringDefine);
        break;
    }
}

} // namespace

void generateValues(AsnModule *module) {
    if (fiDef == 0)
        return;
    initStamps();
    forEachVisValue(module, genRootValue);
}
