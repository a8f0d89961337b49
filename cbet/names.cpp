#include "cbet/names.h"

#include <algorithm>

#include "base/fatal.h"
#include "cbet/forms.h"
#include "model/backend.h"
#include "model/modules.h"
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

Text loneName(const Text &name, AsnType *type) {
    return cLoneName(name, getModuleOfType(type));
}

/* The name of the base. */
Text baseName(AsnType *type) {
    return loneName(hasName(type->baseId) ? printFixRec(type->baseId) : NAMELESS_TYPE, type);
}

Text predefinedName(AsnType *type) {
    const char *predefined = getPredefinedType(type);
    return predefined != nullptr ? predefined : NO_NAME;
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
Text placesOf(AsnType *father) {
    Text places;
    for (; father != nullptr; father = getFatherOfTypeComp(father)) {
        if (getTypeCompStatus(father) == TCS_COMPOF)
            continue;
        if (getFatherOfTypeComp(father) == nullptr || isDefinedBaseType(father) ||
            !hasName(father->compId))
            break;
        places += printFixRec(father->compId) + "_";
    }
    return places;
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
    return form < VF_COUNT ? defaultCTypeArr[form] : nullptr;
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

Text cTypeId(AsnType *type) {
    Text id;
    if (!cIsDefinedBaseType(type)) {
        if (isElemType(type))
            id = concat(getTypeDefinitionLevel(type), "_");
        if (hasName(type->compId))
            id += printFixRec(type->compId) + "_";
    }
    const FixRec &name = isDefinedType(type) ? type->compId : type->baseId;
    if (hasName(name)) {
        if (getBaseTypeCompStatus(type) != TCS_HEADER)
            id += placesOf(getFatherOfTypeComp(type));
        return id + printFixRec(name);
    }
    const FixRec *nearest = nearestName(type);
    return id + (nearest != nullptr ? printFixRec(*nearest) : NAMELESS_TYPE);
}

Text cBaseTypeId(AsnType *type) {
    if (testTypeOption(type, OPT_SKIPPED))
        return cSpecialType(SPECIAL_SKIPPED);
    if (cIsFrameType(type))
        return cSpecialType(SPECIAL_FRAME_PTR);
    if (isTypeExtensionmarker(type))
        return cSpecialType(keepsExtensions(type) ? SPECIAL_EXTENSION_MARKER : SPECIAL_SKIPPED);
    if (isDefinedComponent(type))
        return baseName(type);
    if (isSynonymType(type) && isEntryType(type))
        return baseName(type);
    if (cIsPredefinedType(type))
        return predefinedName(type);
    if (cIsDefinedBaseType(type))
        return baseName(type);
    return cStructTag(cTypeId(type));
}

Text cTypeIdForTypeCompDef(AsnType *type) {
    if (testTypeOption(type, OPT_SKIPPED))
        return cSpecialType(SPECIAL_SKIPPED);
    if (cIsFrameType(type))
        return cSpecialType(SPECIAL_FRAME_PTR);
    if (isRecursiveType(type)) /* LIST / * Node * / */
        return getVF(type) == VF_LIST ? "LIST /* " + cTypeId(type) + " */"
                                      : cStructTag(cTypeId(type));
    if (cIsDefinedBaseType(type))
        return cDefBaseTypeName(type);
    if (cIsPredefinedType(type))
        return predefinedName(type);
    return cStructTag(cTypeId(type));
}

Text cStructTag(std::string_view id) {
    return concat("struct t_", id);
}

Text cModulePrefix(AsnModule *module) {
    Text name = convertHyphens(getModulePrefix(module));
    if (!name.empty() && isAsciiDigit(name.front()))
        name.insert(0, 1, '_');
    return name;
}

Text cDefTypeName(AsnType *type) {
    return loneName(getDefTypeId(type), type);
}

Text cDefBaseTypeName(AsnType *type) {
    return loneName(getDefBaseTypeId(type), type);
}

Text cMemberName(AsnType *comp) {
    return loneName(getTypeCompId(comp), comp);
}

Text cCutName(const Text &name, AsnType *type) {
    return name.substr(0, getGlobalOptions(getModuleOfType(type))->nameLen);
}

Text cASN1VariableName(AsnType *type) {
    Text name;
    if (isTypeExtensionmarker(type))
        name = "extensionmarker";
    else if (isSynonymType(type) && getGlobalOptions(getModuleOfType(type))->optVars != 0)
        name = getBaseTypeRef(type);
    else
        name = getTypeRef(type);
    std::replace(name.begin(), name.end(), ' ', '_'); /* a builtin type may have two words */
    if (isDefinedType(type) && !name.empty() && name[0] >= 'A' && name[0] <= 'Z')
        name[0] = static_cast<char>(name[0] - 'A' + 'a');
    return cCutName(name, type);
}

void cUpdateBuiltinTypeFieldType(AsnType *type, AsnObjClassField *field) {
    const AsnObjClass *objClass = field->fieldClass;
    type->compId = field->compId;
    type->baseId = objClass->compStatus == TCS_HEADER ? objClass->compId : objClass->baseId;
}

