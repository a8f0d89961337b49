#include "gen/staticvalues.h"

#include "base/fatal.h"
#include "base/files.h"
#include "cbet/builtintypes.h"
#include "cbet/constants.h"
#include "cbet/forms.h"
#include "cbet/names.h"
#include "gen/fileset.h"
#include "model/compwalk.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/valuequeries.h"
#include "model/valuetexts.h"
#include "model/valuewalk.h"
#include "objects/classes.h"
#include "objects/fieldvalues.h"
#include "store/records.h"

namespace {

/* --- strings --- */

/* "4, " */
void genLength(AsnType *type, std::int32_t length) {
    if (cHasControlMember(type))
        putF(fiTab, length, cControlSuffix(type), ", ");
}

int digitValue(char digit) {
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    fatalError(FATAL_INTERNAL, "Table generation: octal conversion");
}

/* Elements behind a pointer are octets whatever the string consists of. */
const char *elementsCast(AsnType *type) {
    return cIsDynamicString(type) ? "(BYTE_TYPE *)" : "";
}

/* { 2, "\012\377" } */
void genBitStringFieldValue(AsnValue *value, const char *digits) {
    constexpr int HEX = 16;
    putF(fiTab, "{ ");
    genLength(getTypeOfValue(value), octetStringLength(value));
    /* One piece, since a line may not end inside a string of C. */
    Text literal = Text(elementsCast(getTypeOfValue(value))) + "\"";
    while (*digits != '\0') {
        const int high = digitValue(*digits++);
        const int low = *digits == '\0' ? 0 : digitValue(*digits++);
        literal += cOctalEscape(static_cast<unsigned>(high * HEX + low));
    }
    putF(fiTab, literal += "\" }");
}

/* { 5, "hello" } */
void genCharStringFieldValue(AsnValue *value, std::int32_t length, const char *text) {
    putF(fiTab, "{ ");
    genLength(getTypeOfValue(value), length);
    putF(fiTab, elementsCast(getTypeOfValue(value)), "\"", cStringText(text), "\" }");
}

void genBinaryFieldValue(AsnValue *value, std::int32_t, const char *digits) {
    genBitStringFieldValue(value, digits);
}

/* { 3, { 1 / * iso * /, 3, 6 } } */
void genObjectIdentifierFieldValue(AsnValue *value) {
    const Text arcs = objectIdentifierValueStri(value, ", ", " /* ", " */");
    const Text braced = arcs.empty() ? "" : "{ " + arcs + " }";
    putF(fiTab, "{ ", getNrOfObjectIdentifierComps(value), ", ", braced, " }");
}

/* --- what an initialiser can hold --- */

/* What has a pointer in it would need another constant to point to. */
bool isSimpleLeafComp(AsnType *comp) {
    switch (const int mainType = getTypeMainType(comp)) {
    case TYP_BOOLEAN:
    case TYP_INTEGER:
    case TYP_ENUM:
    case TYP_NULL:
    case TYP_OBJID:
        return true;
    case TYP_BITSTR:
    case TYP_OCTSTR:
        return cIsStaticString(comp);
    default:
        return cHasTextConstants(mainType) && cIsStaticString(comp);
    }
}

bool areSimpleComps(AsnType *type, int *depth);

bool isSimpleComp(AsnType *comp, int *depth) {
    if (isTypeExtensionmarker(comp) || cIsPointerMember(comp) || isRecursiveType(comp))
        return false;
    return getTypeMainType(comp) == TYP_SEQ ? areSimpleComps(comp, depth) : isSimpleLeafComp(comp);
}

bool areSimpleComps(AsnType *type, int *depth) {
    const NestingGuard guard(depth, type->posModule);
    bool simple = true;
    forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
        simple = simple && isSimpleComp(comp, depth);
    });
    return simple;
}

bool isSimpleSequence(AsnType *type) {
    constexpr int MAX_COMPS = 32;
    int depth = 0;
    return !testTypeOption(type, OPT_COMPS_AS_POINTERS) && getNrOfTypeComps(type) <= MAX_COMPS &&
           areSimpleComps(type, &depth);
}

bool isSimpleChoice(AsnType *type) {
    bool simple = true;
    auto check = [&](AsnType *, AsnType *comp, int) {
        simple = simple && !isTypeExtensionmarker(comp) && isSimpleLeafComp(comp);
    };
    forEachTypeComp(type, check);
    return simple;
}

/* --- structures --- */

void genValue(AsnValue *value, int *depth);

/* One place for each component, whether the value has it or not. */
void genComps(AsnValue *value, int *depth) {
    auto genComp = [depth](AsnValue *, AsnType *comp, int compNbr, AsnValue *present, int) {
        if (compNbr != 0)
            putF(fiTab, ",\n");
        if (present != nullptr)
            genValue(present, depth);
        else
            genEmptyFieldValue(comp);
    };
    forEachPresentOrAbsentValueComp(value, genComp);
}

/* BIT(1)|BIT(2), */
void genCompmask(AsnValue *value, AsnType *type) {
    bool written = false;
    auto genTerm = [&](AsnValue *, AsnType *comp, int compNbr, AsnValue *present, int) {
        if (present == nullptr || !isOptionalTypeComp(comp))
            return;
        if (written)
            putF(fiTab, "|");
        putF(fiTab, cBitMacro(type), "(", compNbr, ")");
        written = true;
    };
    forEachPresentOrAbsentValueComp(value, genTerm);
    if (!written)
        putF(fiTab, "0");
    putF(fiTab, ",\n");
}

/* { BIT(1), 5, { 0 } } */
void genSeqFieldValue(AsnValue *value, int *depth) {
    AsnType *type = getTypeOfValue(value);
    if (!isSimpleSequence(type)) {
        putF(fiTab, "{ 0 } /* Complex sequence: NOT YET IMPLEMENTED!! */");
        return;
    }
    if (getNrOfTypeComps(type) == 0) {
        putF(fiTab, "{ 0 }");
        return;
    }
    const Block members(fiTab, "{\n", "}");
    if (isOptionalTypeComps(type))
        genCompmask(value, type);
    genComps(value, depth);
    putF(fiTab, "\n");
}

/* 1, / * number * / */
void genChosenAlternative(AsnValue *value) {
    auto genChosen = [](AsnValue *, AsnType *comp, int compNbr, AsnValue *present, int) {
        if (present != nullptr)
            putF(fiTab, compNbr, ", /* ", getTypeCompId(comp), " */\n");
    };
    forEachPresentOrAbsentValueComp(value, genChosen);
}

/* { 1, { 0 }, 5 }: the alternatives stand side by side here */
void genChoiceFieldValue(AsnValue *value, int *depth) {
    if (!isSimpleChoice(getTypeOfValue(value))) {
        putF(fiTab, "{ 0 } /* Complex choice: NOT YET IMPLEMENTED!! */");
        return;
    }
    if (getNrOfTypeComps(getTypeOfValue(value)) == 0) {
        putF(fiTab, "{ 0 }");
        return;
    }
    const Block members(fiTab, "{\n", "}");
    genChosenAlternative(value);
    genComps(value, depth);
    putF(fiTab, "\n");
}

/* 5, or { FALSE, 5 } for an enumeration that can be extended */
void genNumber(AsnValue *value) {
    const bool extensible = isExtensibleEnumeratedList(getTypeOfValue(value));
    if (extensible)
        putF(fiTab, "{ FALSE, ");
    putF(fiTab, integerValueStri(value));
    if (extensible)
        putF(fiTab, " }");
}

void genNoValue(AsnType *type) {
    putF(fiTab, cIsHeldInStructure(type) ? "{ 0 } /* NOT YET IMPLEMENTED!! */"
                                         : "0 /* NOT YET IMPLEMENTED!! */");
}

void genValue(AsnValue *value, int *depth) {
    const NestingGuard guard(depth, value->posModule, MAX_NESTING);
    const int mainType = getValueMainType(value);
    switch (mainType) {
    case TYP_BOOLEAN:
        putF(fiTab, booleanValue(value) ? "TRUE" : "FALSE");
        break;
    case TYP_INTEGER:
    case TYP_ENUM:
        genNumber(value);
        break;
    case TYP_BITSTR:
    case TYP_OCTSTR:
        if (getVF(getTypeOfValue(value)) == VF_LIST)
            genNoValue(getTypeOfValue(value));
        else if (mainType == TYP_BITSTR)
            forBitStringValueX(value, genBinaryFieldValue);
        else
            forOctetStringValue(value, genBinaryFieldValue);
        break;
    case TYP_REAL:
        putF(fiTab, doubleRealValueStri(value));
        break;
    case TYP_NULL:
        putF(fiTab, "0");
        break;
    case TYP_SEQ:
        genSeqFieldValue(value, depth);
        break;
    case TYP_CHOICE:
        genChoiceFieldValue(value, depth);
        break;
    case TYP_OBJID:
        genObjectIdentifierFieldValue(value);
        break;
    default:
        if (cHasTextConstants(mainType) && getVF(getTypeOfValue(value)) != VF_LIST)
            forCharacterStringValue(value, genCharStringFieldValue);
        else
            genNoValue(getTypeOfValue(value));
    }
}

} // namespace

void genFixedTypeValueFieldValue(AsnValue *value) {
    int depth = 0;
    genValue(value, &depth);
}

/* { 1, { .number = 5 } } */
void genSetElementValue(AsnValue *value) {
    if (getValueMainType(value) != TYP_CHOICE) {
        genFixedTypeValueFieldValue(value);
        return;
    }
    bool written = false;
    int depth = 0;
    auto genChosen = [&](AsnValue *, AsnType *comp, int compNbr, AsnValue *present, int) {
        if (present == nullptr || !isSimpleComp(comp, &depth))
            return;
        putF(fiTab, "{ ", compNbr, ", { .", cMemberName(comp), " = ");
        genFixedTypeValueFieldValue(present);
        putF(fiTab, " } }");
        written = true;
    };
    if (!testTypeOption(getTypeOfValue(value), OPT_COMPS_AS_POINTERS))
        forEachPresentOrAbsentValueComp(value, genChosen);
    if (!written)
        putF(fiTab, "{ 0 } /* Complex choice: NOT YET IMPLEMENTED!! */");
}

/* --- places without a value --- */

void genEmptyFieldValue(AsnType *type) {
    switch (const int mainType = getTypeMainType(type)) {
    case TYP_BOOLEAN:
        putF(fiTab, "FALSE");
        break;
    case TYP_INTEGER:
    case TYP_ENUM:
    case TYP_NULL:
        putF(fiTab, isExtensibleEnumeratedList(type) ? "{ FALSE, 0 }" : "0");
        break;
    case TYP_BITSTR:
    case TYP_OCTSTR:
    case TYP_SEQ:
    case TYP_CHOICE:
        putF(fiTab, "{ 0 }");
        break;
    case TYP_OBJID:
        putF(fiTab, "{ 0, { 0 } }");
        break;
    default:
        if (cHasTextConstants(mainType))
            putF(fiTab, "{ 0 }");
        else
            genNoValue(type);
    }
}

void genEmptyClassField(AsnFieldValue *value) {
    auto genEmpty = [](AsnObjClassField *, AsnType *type) {
        if (isExtensibleEnumeratedList(type))
            putF(fiTab, "{ 0 }");
        else
            genEmptyFieldValue(type);
    };
    forFixedTypeValueField(getObjClassFieldOfFieldValue(value), genEmpty);
    forFixedTypeValueSetField(getObjClassFieldOfFieldValue(value), genEmpty);
}
