#include "gen/classes.h"

#include "base/files.h"
#include "cbet/embedded.h"
#include "cbet/forms.h"
#include "cbet/names.h"
#include "gen/classmeta.h"
#include "gen/defines.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "gen/typeshape.h"
#include "model/compwalk.h"
#include "model/modules.h"
#include "model/stamps.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "objects/classes.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"
#include "store/records.h"

namespace {

Text fieldId(AsnObjClassField *field) {
    return getIdOf(field);
}

/* The member would hide the type that `type`, or something inside it, is declared by. */
bool hidesType(const Text &member, AsnType *type) {
    if (member == orEmpty(getMetaBaseTypeId(type)))
        return true;
    bool hides = false;
    if (!cIsDefinedBaseType(type) && !isLeafType(type))
        forEachTypeCompOrElem(type, [&](AsnType *, AsnType *part, int) {
            hides = hides || hidesType(member, part);
        });
    return hides;
}

/* In C++ a member may not have the name of a type that its structure uses. */
bool hidesTypeOfClass(const Text &member, AsnObjClass *objClass) {
    bool hides = false;
    auto ofType = [&](AsnObjClassField *, AsnType *type) { hides |= hidesType(member, type); };
    auto ofClass = [&](AsnObjClassField *, AsnObjClass *governor) {
        hides |= member == getMetaClassName(governor);
    };
    forEachObjClassField(objClass, [&](AsnObjClass *, AsnObjClassField *field, int) {
        forFixedTypeValueField(field, ofType);
        forFixedTypeValueSetField(field, ofType);
        forObjectField(field, ofClass);
        forObjectSetField(field, ofClass);
    });
    return hides || member == "ENTRYDESCR";
}

/* The field's name as that of a member. */
Text fieldName(AsnObjClassField *field) {
    AsnObjClass *objClass = getObjClassOfField(field);
    AsnModule *module = getModuleOf(objClass);
    Text name = cLoneName(fieldId(field), module);
    if (cAvoidsCPlusPlusWords(module) && hidesTypeOfClass(name, objClass))
        name += '_';
    return name;
}

bool isSkippedClass(AsnObjClass *objClass) {
    return testOptionOf(objClass, OPT_SKIPPED);
}

bool omitsSkippedFields(AsnObjClass *objClass) {
    return getGlobalOptions(getModuleOf(objClass))->omitSkippedFields != 0;
}

const char *nearText(AsnObjClassField *field) {
    return testOptionOf(field, OPT_NEAR) ? " near" : "";
}

/* --- what a class needs --- */

/* Types of another module stand in its own file, which this one includes: to write them here too
   would keep them out of it. Named numbers and components of a type that is written in the field
   itself carry the names of field and class. */
void genReferredTypeField(AsnObjClassField *field, AsnType *type, Alternatives alternatives,
                          TypesRun &run) {
    const bool isOwn = isCurrentModule(getModuleOfType(type));
    if (!cIsDefinedBaseType(type)) {
        cUpdateBuiltinTypeFieldType(type, field);
        renewBETypeInfo(type);
        taviUseClassNode(getObjClassOfField(field));
        pushPath();
        addElemToPath(getMetaClassId(getObjClassOfField(field)).c_str());
        if (isOwn)
            genReferredTypes(type, run);
        genDefines(type, alternatives);
        popPath();
    } else if (isOwn) {
        if (isDefinedType(type))
            genType(type, run);
        else
            cForTypeGeneratedInCurrentModule(type, [&run](AsnType *base) { genType(base, run); });
    }
}

void genClass(AsnObjClass *objClass, TypesRun &run);

void genReferredDefinitions(AsnObjClass *objClass, TypesRun &run) {
    if (isSkippedClass(objClass) || isPredefinedObjClass(objClass))
        return;
    auto governorClass = [&run](AsnObjClassField *, AsnObjClass *governor) {
        genClass(governor, run);
    };
    auto typeOfValue = [&run](AsnObjClassField *field, AsnType *type) {
        genReferredTypeField(field, type, Alternatives::SIDE_BY_SIDE, run);
    };
    auto typeOfSet = [&run](AsnObjClassField *field, AsnType *type) {
        genReferredTypeField(field, type, Alternatives::IN_UNION, run);
    };
    forEachObjClassField(objClass, [&](AsnObjClass *, AsnObjClassField *field, int) {
        if (isFixedTypeValueField(field))
            forFixedTypeValueField(field, typeOfValue);
        else if (isFixedTypeValueSetField(field))
            forFixedTypeValueSetField(field, typeOfSet);
        else if (isObjectField(field))
            forObjectField(field, governorClass);
        else if (isObjectSetField(field))
            forObjectSetField(field, governorClass);
    });
}

/* --- fields --- */

/* Tags of the structures in fields of the class. */
using FieldStructs = std::unordered_set<Text>;

/* SKIPPED key; / * GOVERNOR SKIPPED * / */
void genSkippedField(AsnObjClassField *field, const char *note) {
    const bool noted = *note != '\0';
    if (omitsSkippedFields(getObjClassOfField(field)))
        putF(fiTyp, "/* SKIPPED ", fieldName(field), noted ? " " : "", note, " */\n");
    else
        putF(fiTyp, "SKIPPED ", fieldName(field), ";", noted ? " /* " : "", note,
             noted ? " */" : "", "\n");
}

constexpr const char *GOVERNOR_SKIPPED = "GOVERNOR SKIPPED";

/* A CHOICE has its alternatives side by side here, since a constant can give a value to the first
   member of a union only. */
void genClassFieldChoiceTypedefContents(AsnObjClassField *field, AsnType *type,
                                        FieldStructs &structs) {
    const Text classId = getDefObjClassId(getObjClassOfField(field));
    putF(fiTyp, cStructTag(fieldId(field) + "_" + classId), " ");
    const Block structure(fiTyp, "{\n", "}");
    genControlMember(type);
    ShapePlace place{getObjClassOfField(field), field, &structs};
    forEachTypeComp(type, [&place](AsnType *father, AsnType *son, int) {
        genNonLeafContents(father, son, place);
    });
}

/* The governor's name, or the whole type where it has none. */
void genGovernorType(AsnObjClassField *field, AsnType *type, FieldStructs &structs) {
    if (cIsDefinedBaseType(type)) {
        putF(fiTyp, getMetaTypeName(type));
        return;
    }
    cUpdateBuiltinTypeFieldType(type, field);
    genTypedefContents(type, {getObjClassOfField(field), field, &structs});
}

void genFixedTypeValueField(AsnObjClassField *field, AsnType *type, FieldStructs &structs) {
    if (testTypeOption(type, OPT_SKIPPED)) {
        genSkippedField(field, GOVERNOR_SKIPPED);
        return;
    }
    if (getTypeMainType(type) == TYP_CHOICE)
        genClassFieldChoiceTypedefContents(field, type, structs);
    else
        genGovernorType(field, type, structs);
    putF(fiTyp, " ", fieldName(field), ";\n");
}

/* struct {
     uint16 n;
     Code* elem;
   } codes; */
void genFixedTypeValueSetField(AsnObjClassField *field, AsnType *type, FieldStructs &structs) {
    if (testTypeOption(type, OPT_SKIPPED)) {
        genSkippedField(field, GOVERNOR_SKIPPED);
        return;
    }
    AsnModule *module = getModuleOf(getObjClassOfField(field));
    const bool counted = getBEModMetaRec(module)->tabValueSetN;
    const bool separate = getGlobalOptions(module)->tabO != 0;
    const char *pointer = testOptionOf(field, OPT_NEAR) ? " near*" : "*";
    const char *array = separate ? "" : " [MAX_ASN_SET_ELEMS + 1]";
    if (!separate)
        pointer = "";
    if (counted) {
        const Text close = "} " + fieldName(field) + ";\n";
        const Block structure(fiTyp, "struct {\n", close.c_str());
        putF(fiTyp, "uint16 n;\n");
        genGovernorType(field, type, structs);
        putF(fiTyp, pointer, " elem", array, ";\n");
    } else {
        genGovernorType(field, type, structs);
        putF(fiTyp, pointer, " ", fieldName(field), array, ";\n");
    }
}

/* A class that is just being written is known by its tag only. */
Text classRef(AsnObjClass *governor) {
    return getObjClassStamp(governor) == stampGIP ? "const " + cStructTag(getMetaClassId(governor))
                                                  : getMetaClassName(governor);
}

/* ERROR* next; */
void genObjectField(AsnObjClassField *field, AsnObjClass *governor) {
    if (isSkippedClass(governor))
        genSkippedField(field, GOVERNOR_SKIPPED);
    else
        putF(fiTyp, classRef(governor), nearText(field), "* ", fieldName(field), ";\n");
}

/* ERROR* const* errors; or ERROR* errors [MAX_ASN_SET_ELEMS + 1]; */
void genObjectSetField(AsnObjClassField *field, AsnObjClass *governor) {
    if (isSkippedClass(governor)) {
        genSkippedField(field, GOVERNOR_SKIPPED);
        return;
    }
    const bool separate =
        getGlobalOptions(getModuleOf(getObjClassOfField(field)))->tabO != 0;
    const char *pointer = testOptionOf(field, OPT_NEAR) ? " near* const" : "* const";
    putF(fiTyp, classRef(governor), separate ? pointer : "", "* ", fieldName(field),
         separate ? "" : " [MAX_ASN_SET_ELEMS + 1]", ";\n");
}

void genClassTypedefContents(AsnObjClassField *field, FieldStructs &structs) {
    if (isVariableTypeValueField(field) || isVariableTypeValueSetField(field))
        genSkippedField(field, "NOT SUPPORTED");
    else if (testOptionOf(field, OPT_SKIPPED))
        genSkippedField(field, "");
    else if (isTypeField(field))
        putF(fiTyp, "ENTRYDESCR", nearText(field), "* ", fieldName(field), ";\n");
    else if (isFixedTypeValueField(field))
        forFixedTypeValueField(field, [&](AsnObjClassField *governed, AsnType *type) {
            genFixedTypeValueField(governed, type, structs);
        });
    else if (isFixedTypeValueSetField(field))
        forFixedTypeValueSetField(field, [&](AsnObjClassField *governed, AsnType *type) {
            genFixedTypeValueSetField(governed, type, structs);
        });
    else if (isObjectField(field))
        forObjectField(field, genObjectField);
    else if (isObjectSetField(field))
        forObjectSetField(field, genObjectSetField);
}

/* --- the class --- */

/* {
     sint8 compmask;
     ...
   } OPERATION; */
void genClassMembers(AsnObjClass *objClass) {
    const Text close = "} " + getMetaClassName(objClass) + ";\n";
    const Block structure(fiTyp, "{\n", close.c_str());
    if (isOptionalObjClassFields(objClass))
        putF(fiTyp, getClassCompmaskField(objClass), ";\n");
    FieldStructs structs;
    forEachObjClassField(objClass, [&structs](AsnObjClass *, AsnObjClassField *field, int) {
        genClassTypedefContents(field, structs);
    });
}

/* typedef const struct t_OPERATION {
     ...
   } OPERATION; */
void genClassStructure(AsnObjClass *objClass) {
    putF(fiTyp, "\n");
    printObjClassEmbeddingOptions(fiTyp, objClass, TED_TYP_BEFORE);
    putF(fiTyp, "typedef const ", cStructTag(getMetaClassId(objClass)), " ");
    genClassMembers(objClass);
    taviAddItem(ITEM_TYPEDEF, fiTyp, {getMetaClassName(objClass)});
    printObjClassEmbeddingOptions(fiTyp, objClass, TED_TYP_BEHIND);
}

/* typedef OPERATION* OPERATION_iter; */
void genClassIteratorTypedef(AsnObjClass *objClass) {
    putF(fiTyp, "\ntypedef ", getMetaClassName(objClass), "* ", getMetaClassId(objClass),
         "_iter;\n");
    taviAddItem(ITEM_TYPEDEF, fiTyp, {getMetaClassId(objClass), "_iter"});
}

void genClassTypedef(AsnObjClass *objClass) {
    /* Without a name of its own the class is that of the run-time layer, with its iterator. */
    if (isSkippedClass(objClass) || isPlainPredefinedObjClass(objClass))
        return;
    if (isPredefinedObjClass(objClass)) {
        putF(fiTyp, "\ntypedef ", getMetaBaseClassId(objClass), " ", getMetaClassName(objClass),
             ";\n");
        taviAddItem(ITEM_TYPEDEF, fiTyp, {getMetaClassName(objClass)});
    } else {
        genClassStructure(objClass);
    }
    genClassIteratorTypedef(objClass);
}

void genClass(AsnObjClass *objClass, TypesRun &run) {
    const NestingGuard guard(&run.depth, objClass->posModule);
    if (!hasOwnStructure(objClass) || !isCurrentModule(getModuleOf(objClass)) ||
        getObjClassStamp(objClass) >= stampGIP)
        return; /* a class of another module stands in its own file */
    setObjClassStamp(objClass, stampGIP);
    const TaviNodeScope enclosing;
    genReferredDefinitions(objClass, run);
    taviUseClassNode(objClass);
    genClassTypedef(objClass);
    genClassDefines(objClass);
    setObjClassStamp(objClass, stampGAD);
}

} // namespace

void genClasses(AsnModule *module, TypesRun &run) {
    forEachObjClass(module, [&run](AsnObjClass *objClass, int) { genClass(objClass, run); });
}

int getClassCompmaskSize(AsnObjClass *objClass) {
    constexpr int BITS8 = 8, BITS16 = 16;
    const int fields = getNrOfObjClassFields(objClass);
    if (fields <= BITS8)
        return VF_I8;
    return fields <= BITS16 ? VF_I16 : VF_I32;
}

int getClassCompmaskWords(AsnObjClass *objClass) {
    constexpr int WORD_BITS = 32;
    return (getNrOfObjClassFields(objClass) + WORD_BITS - 1) / WORD_BITS;
}

const char *getClassCompmaskBit(AsnObjClass *objClass) {
    return getClassCompmaskSize(objClass) == VF_I32 ? "BITL" : "BIT";
}

Text getClassCompmaskField(AsnObjClass *objClass) {
    const Text member = concat(getLangType(getClassCompmaskSize(objClass)), " compmask");
    const int words = getClassCompmaskWords(objClass);
    return words > 1 ? concat(member, " [", words, "]") : member;
}
