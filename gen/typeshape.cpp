#include "gen/typeshape.h"

#include <cstdio>

#include "base/files.h"
#include "cbet/control.h"
#include "cbet/embedded.h"
#include "cbet/forms.h"
#include "cbet/names.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "model/compwalk.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/valuesets.h"
#include "objects/classes.h"
#include "project/ketratavi.h"
#include "store/records.h"

namespace {

bool isPlainChoice(AsnType *type) {
    return getTypeMainType(type) == TYP_CHOICE && !testTypeOption(type, OPT_COMPS_AS_POINTERS);
}

sint64 allocatedSize(AsnType *type) {
    sint64 low, high, alloc;
    getInt64SizeEndpoints(type, &low, &high, &alloc);
    return alloc;
}

/* IA5CHAR st [8+1]; */
void genLeafStringHome(AsnType *type) {
    constexpr std::int32_t BITS = 8;
    const char *home = getMetaHomeTypeId(type);
    if (home == nullptr) {
        std::fprintf(stderr, "WARNING: %s not yet supported, sorry.\n",
                     getTypeMainTypeStri(type).c_str());
        home = "Unsupported_String_type";
    }
    sint64 size = allocatedSize(type);
    if (getTypeMainType(type) == TYP_BITSTR && !i64ismax(size))
        size = i64divl(i64addl(size, BITS - 1), BITS);
    putF(fiTyp, home, " st [", i64tostr(size), isRestrCharStringType(type) ? "+1" : "", "];\n");
}

void warnOfUnknownLeaf(AsnType *type) {
    std::fprintf(stderr, "%s:%d: warning: Unknown leaf type: %s\n",
                 getModuleFilePath(getModuleOfType(type)).c_str(), getTypeDefinitionLine(type),
                 getTypeMainTypeStri(type).c_str());
    taviWarn(getModuleOfType(type), getTypeDefinitionLine(type), SUMMARY_INTERNAL_ERROR,
             "Unknown leaf type");
}

/* "argument_OPERATION": the component's name, or the field's for its own type, and the
   class. An element has no name of its own and keeps its place in the field. */
Text fieldStructName(AsnType *type, ShapePlace &place) {
    Text name;
    if (getFatherOfTypeComp(type) == nullptr)
        name = getIdOf(place.field);
    else
        name = getMetaCompId(type);
    if (name.empty())
        return cTypeId(type);
    Text whole = name + "_" + getDefObjClassId(place.objClass);
    if (place.fieldStructs->insert(whole).second)
        return whole;
    /* Another field has a structure of this name, maybe of the same type. */
    const Text field = getIdOf(place.field);
    whole = name + "_" + field + "_" + getDefObjClassId(place.objClass);
    for (int nr = 2; !place.fieldStructs->insert(whole).second; ++nr) {
        whole = concat(name, nr, "_", field, "_", getDefObjClassId(place.objClass));
    }
    return whole;
}

/* struct t_Msg */
void genStructTag(AsnType *type, ShapePlace &place) {
    if (place.objClass != nullptr)
        setBETypeInfoNames(type, fieldStructName(type, place).c_str());
    putF(fiTyp, cStructTag(getMetaTypeId(type)), " ");
}

void genLeafType(AsnType *type, ShapePlace &place) {
    if (testTypeOption(type, OPT_SKIPPED) || cIsFrameType(type)) {
        putF(fiTyp, getMetaBaseTypeId(type));
    } else if (isStructuredType(type)) {
        genStructTag(type, place);
        const Block structure(fiTyp, "{\n", "}");
        putF(fiTyp, cSpecialType(SPECIAL_NOBODY_USES), " eitherthisfield;\n");
    } else if (cIsPredefinedType(type)) {
        putF(fiTyp, getMetaBaseTypeId(type));
    } else if (cIsStaticString(type) || cIsDynamicString(type)) {
        genStructTag(type, place);
        const Block structure(fiTyp, "{\n", "}");
        genControlMember(type);
        genLeafStringHome(type);
    } else {
        warnOfUnknownLeaf(type);
    }
}

void genMembers(AsnType *type, ShapePlace &place) {
    forEachTypeCompOrElem(type, [&place](AsnType *father, AsnType *son, int) {
        genNonLeafContents(father, son, place);
    });
}

void genNonLeafType(AsnType *type, ShapePlace &place) {
    if (cIsFrameType(type)) {
        putF(fiTyp, getMetaBaseTypeId(type));
        return;
    }
    if (cIsLinkedList(type)) {
        /* The element stands in a comment, since the C type is LIST whatever it holds. */
        const Block list(fiTyp, "LIST /*\n", "*/");
        genMembers(type, place);
        return;
    }
    genStructTag(type, place);
    const Block structure(fiTyp, "{\n", "}");
    genControlMember(type);
    if (isPlainChoice(type)) {
        putF(fiTyp, "union ");
        const Block alternatives(fiTyp, "{\n", "} i1;\n");
        genMembers(type, place);
    } else {
        genMembers(type, place);
    }
}

/* "* val.stru;": the member of an ASNHOME, in a comment. */
void genHomeMember(AsnType *son) {
    if (cIsPtrAsnHomeMember(son))
        putF(fiTyp, "*");
    putF(fiTyp, " val.", getAsnhomeMember(son), ";\n");
}

void genMemberType(AsnType *father, AsnType *son, ShapePlace &place) {
    if (cIsLinkedList(father)) {
        putF(fiTyp, getMetaBaseTypeId(son));
    } else if (testTypeOption(son, OPT_HOME)) {
        const Block home(fiTyp, "ASNHOME /*\n", "*/ ");
        putF(fiTyp, getMetaBaseTypeId(son));
        genHomeMember(son);
    } else if (getTypeMainType(son) == TYP_OPEN) {
        putF(fiTyp, cIsFrameType(son) ? "FRAME_PTR " : "ANY ");
    } else if (cIsDefinedBaseType(son)) {
        putF(fiTyp, cTypeIdForTypeCompDef(son));
    } else if (isTypeExtensionmarker(son)) {
        putF(fiTyp, getMetaBaseTypeId(son));
    } else if (isLeafType(son)) {
        genLeafType(son, place);
    } else {
        genNonLeafType(son, place);
    }
}

const char *pointerText(AsnType *son) {
    if (!cIsPointerMember(son))
        return "";
    return testTypeOption(son, OPT_NEAR) ? " near*" : "*";
}

void genMemberTail(AsnType *father, AsnType *son) {
    if (cIsLinkedList(father)) {
        genHomeMember(son);
    } else if (getTypeMainType(son) == TYP_OPEN && !isElemType(son) && !cIsPointerMember(son)) {
        putF(fiTyp, getMetaMemberName(son), ";\n");
    } else if (isElemType(son)) {
        putF(fiTyp, pointerText(son));
        if (testTypeOption(father, OPT_DYNAMIC_ARRAY))
            putF(fiTyp, "* elem");
        else
            putF(fiTyp, " elem [", i64tostr(allocatedSize(father)), "]");
        putF(fiTyp, ";\n");
    } else {
        putF(fiTyp, pointerText(son));
        putF(fiTyp, " ", getMetaMemberName(son), ";\n");
    }
}

} // namespace

bool isInCategorySet(AsnType *type, unsigned set) {
    constexpr int CATEGORY_BITS = 8;
    for (int category = 0; category < CATEGORY_BITS; ++category)
        if ((set >> category & 1u) != 0 && typeIsInEntryCategory(type, category))
            return true;
    return false;
}

void genTypedefContents(AsnType *type, ShapePlace place) {
    if (isLeafType(type))
        genLeafType(type, place);
    else
        genNonLeafType(type, place);
}

void genControlMember(AsnType *type) {
    if (cHasControlMember(type))
        putF(fiTyp, getControlMemberDef(type));
    if (const int form = cIgnoredCountVF(type); form != VF_NONE)
        putF(fiTyp, getLangType(form), " nIgnored;\n");
}

void genNonLeafContents(AsnType *father, AsnType *son, ShapePlace &place) {
    const NestingGuard guard(&place.depth, son->posModule);
    printTypeEmbeddingOptions(fiTyp, son, TED_TYP_BEFORE);
    genMemberType(father, son, place);
    genMemberTail(father, son);
    printTypeEmbeddingOptions(fiTyp, son, TED_TYP_BEHIND);
}
