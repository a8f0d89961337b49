#include "cbet/names.h"

#include <algorithm>

#include "base/fatal.h"
#include "cbet/forms.h"
#include "cbet/reserved.h"
#include "model/backend.h"
#include "model/backvar.h"
#include "model/modules.h"
#include "model/nametexts.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typetables.h"
#include "objects/classes.h"
#include "options/ketracnf.h"

namespace {

const char *const NO_NAME = "?!?";
const char *const NAMELESS_TYPE = "<UNKNOWN_NAMELESS_TYPE>";

/* ORDER SPECIAL */
const char *const specialTypes[SPECIAL_COUNT] = {"SKIPPED", "FRAME_PTR", "NOBODYUSESTHISTYPE",
                                                 "EXTENSIONMARKER"};

bool hasName(const FixRec &fix) {
    return fix.id != nullptr;
}

void appendName(Text &dst, const FixRec &fix, const char *suffix) {
    dst += concat(printFixRec(fix), suffix);
}

Text &between(Text &dst, const char *prefix, const char *text, const char *postfix) {
    return dst.assign(orEmpty(prefix)).append(text).append(orEmpty(postfix));
}

Text &loneBetween(Text &dst, const char *prefix, const Text &name, AsnType *type,
                  const char *postfix) {
    return between(dst, prefix, cLoneName(name, getModuleOfType(type)).c_str(), postfix);
}

/* The name of the base between prefix and postfix. */
Text &baseName(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    Text name = NAMELESS_TYPE;
    if (hasName(type->baseId))
        name = printFixRec(type->baseId);
    return loneBetween(dst, prefix, name, type, postfix);
}

Text &predefinedName(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    const char *predefined = getPredefinedType(type);
    return between(dst, prefix, predefined != nullptr ? predefined : NO_NAME, postfix);
}

/* The first of the type and its ancestors that carries the name of a definition, null without one.
 */
const FixRec *nearestName(AsnType *type) {
    for (; type != nullptr; type = getFatherOfTypeComp(type))
        if (getTypeCompStatus(type) == TCS_HEADER || hasName(type->baseId))
            return hasName(type->baseId) ? &type->baseId : nullptr;
    return nullptr;
}

/* The names of what a nested type lies in, from the inside out, up to the definition that it is part
   of or that a component on the way refers to. What COMPONENTS OF brings in lies in the structure
   that it is brought into. */
void appendPlaces(Text &dst, AsnType *father) {
    for (; father != nullptr; father = getFatherOfTypeComp(father)) {
        if (getTypeCompStatus(father) == TCS_COMPOF)
            continue;
        if (getFatherOfTypeComp(father) == nullptr || isDefinedBaseType(father) ||
            !hasName(father->compId))
            return;
        appendName(dst, father->compId, "_");
    }
}

bool keepsExtensions(AsnType *marker) {
    AsnType *father = getFatherOfTypeComp(marker);
    return father != nullptr && testTypeOption(father, OPT_SAVE_EXTENSIONS);
}

bool isDefinedComponent(AsnType *type) {
    return isCompOrElemType(type) && cIsDefinedBaseType(type);
}

bool isFramedAny(AsnType *type) {
    return (getVF(type) == VF_ANY || getVF(type) == VF_OPEN) && cIsFrameType(type);
}

/* A row of the tables of value forms that "C-GENERATION=" replaces. */
struct FormSwitch {
    int first;
    int last;
    int bit;
    const char *cType;
    const char *member;
};
constexpr FormSwitch formSwitches[] = {
    {VF_REAL32, VF_REAL128, CGEN_REAL, "REAL", "real"},
    {VF_COMT, VF_COMT, CGEN_COMMONTIME, "COMMONTIME", "comt"},
    {VF_EXTERNAL_1990, VF_EXTERNAL_1990, CGEN_EXTERNAL, "EXTERNAL", "ext"},
};

const FormSwitch *activeSwitch(AsnType *type) {
    const int form = getVF(type);
    for (const FormSwitch &row : formSwitches)
        if (form >= row.first && form <= row.last)
            return testCGenerationOption(getModuleOfType(type), row.bit) ? &row : nullptr;
    return nullptr;
}

} // namespace

const char *cSpecialType(int number) {
    return number >= 0 && number < SPECIAL_COUNT ? specialTypes[number] : nullptr;
}

const char *getPredefinedType(AsnType *type) {
    if (isExtensibleEnumeratedList(type))
        return "EXTENSIBLE_ENUMERATED";
    if (const FormSwitch *row = activeSwitch(type))
        return row->cType;
    if (isFramedAny(type))
        return cSpecialType(SPECIAL_FRAME_PTR);
    const int form = getVF(type);
    return form < VF_COUNT ? targetLangTypeArr[form] : nullptr;
}

const char *getAsnhomeMember(AsnType *type) {
    if (isTypeExtensionmarker(type))
        return keepsExtensions(type) ? "extensionmarker" : asnhomeMemberArr[VF_NULL];
    const int form = cGetHomeVF(type);
    if (form == VF_FRM)
        return asnhomeMemberArr[VF_FRM];
    if (isExtensibleEnumeratedList(type))
        return "xenum";
    if (const FormSwitch *row = activeSwitch(type))
        return row->member;
    if (form < VF_BOOL || form >= VF_COUNT)
        fatalError(FATAL_INTERNAL, "CBET: Unrecognized ASNHOME member indicator");
    return orEmpty(asnhomeMemberArr[form]);
}

Text &cAsnHomeMember(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    return between(dst, prefix, getAsnhomeMember(type), postfix);
}

Text &cTypeId(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    dst = orEmpty(prefix);
    if (!cIsDefinedBaseType(type)) {
        if (isElemType(type))
            dst += formatText("%d_", getTypeDefinitionLevel(type));
        if (hasName(type->compId))
            appendName(dst, type->compId, "_");
    }
    const FixRec &name = isDefinedType(type) ? type->compId : type->baseId;
    AsnType *father = getFatherOfTypeComp(type);
    if (hasName(name)) {
        if (getBaseTypeCompStatus(type) != TCS_HEADER)
            appendPlaces(dst, father);
        appendName(dst, name, postfix);
    } else if (const FixRec *nearest = nearestName(type)) {
        appendName(dst, *nearest, postfix);
    } else {
        dst.append(NAMELESS_TYPE).append(orEmpty(postfix));
    }
    return dst;
}

Text &cBaseTypeId(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    if (testTypeOption(type, OPT_SKIPPED))
        return between(dst, prefix, cSpecialType(SPECIAL_SKIPPED), postfix);
    if (cIsFrameType(type))
        return between(dst, prefix, cSpecialType(SPECIAL_FRAME_PTR), postfix);
    if (isTypeExtensionmarker(type)) {
        const int special = keepsExtensions(type) ? SPECIAL_EXTENSION_MARKER : SPECIAL_SKIPPED;
        return between(dst, prefix, cSpecialType(special), postfix);
    }
    if (isDefinedComponent(type))
        return baseName(dst, prefix, type, postfix);
    if (isSynonymType(type) && isEntryType(type))
        return baseName(dst, prefix, type, postfix);
    if (cIsPredefinedType(type))
        return predefinedName(dst, prefix, type, postfix);
    if (cIsDefinedBaseType(type))
        return baseName(dst, prefix, type, postfix);
    return cTypeId(dst, (Text(orEmpty(prefix)) + "struct t_").c_str(), type, postfix);
}

Text &cTypeIdForTypeCompDef(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    if (testTypeOption(type, OPT_SKIPPED))
        return between(dst, prefix, cSpecialType(SPECIAL_SKIPPED), postfix);
    if (cIsFrameType(type))
        return between(dst, prefix, cSpecialType(SPECIAL_FRAME_PTR), postfix);
    const Text tag = Text(orEmpty(prefix)) + "struct t_";
    if (isRecursiveType(type)) {
        if (getVF(type) != VF_LIST)
            return cTypeId(dst, tag.c_str(), type, postfix);
        /* LIST / * Node * / */
        const Text behind = Text(" */") + orEmpty(postfix);
        return cTypeId(dst, (Text(orEmpty(prefix)) + "LIST /* ").c_str(), type, behind.c_str());
    }
    if (cIsDefinedBaseType(type))
        return cDefBaseTypeName(dst, prefix, type, postfix);
    if (cIsPredefinedType(type))
        return predefinedName(dst, prefix, type, postfix);
    return cTypeId(dst, tag.c_str(), type, postfix);
}

Text &cModulePrefix(Text &dst, const char *prefix, AsnModule *module, const char *postfix) {
    Text name = convertHyphens(getModulePrefix(module));
    if (!name.empty() && isAsciiDigit(name.front()))
        name.insert(0, 1, '_');
    return dst = concat(prefix, name, postfix);
}

Text &cDefTypeName(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    return loneBetween(dst, prefix, getDefTypeId(type), type, postfix);
}

Text &cDefBaseTypeName(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    return loneBetween(dst, prefix, getDefBaseTypeId(type), type, postfix);
}

Text &cMemberName(Text &dst, const char *prefix, AsnType *comp, const char *postfix) {
    return loneBetween(dst, prefix, getTypeCompId(comp), comp, postfix);
}

Text &cASN1VariableName(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    const GlobalOptions *options = getGlobalOptions(getModuleOfType(type));
    Text name;
    if (isTypeExtensionmarker(type))
        name = "extensionmarker";
    else if (isSynonymType(type) && options->optVars != 0)
        name = getBaseTypeRef(type);
    else
        name = getTypeRef(type);
    std::replace(name.begin(), name.end(), ' ', '_'); /* a builtin type may have two words */
    if (isDefinedType(type) && !name.empty() && name[0] >= 'A' && name[0] <= 'Z')
        name[0] = static_cast<char>(name[0] - 'A' + 'a');
    if (name.size() > options->nameLen)
        name.resize(options->nameLen);
    return between(dst, prefix, name.c_str(), postfix);
}

void cUpdateBuiltinTypeFieldType(AsnType *type, AsnObjClassField *field) {
    const AsnObjClass *objClass = field->fieldClass;
    type->compId = field->compId;
    type->baseId = objClass->compStatus == TCS_HEADER ? objClass->compId : objClass->baseId;
}

