#include "gen/typeshape.h"

#include <cstdio>

#include "base/files.h"
#include "cbet/control.h"
#include "cbet/embedded.h"
#include "cbet/names.h"
#include "cbet/forms.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "model/bounds.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
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
        Text word;
        std::fprintf(stderr, "WARNING: %s not yet supported, sorry.\n",
                     getTypeMainTypeStri(word, nullptr, type, nullptr).c_str());
        home = "Unsupported_String_type";
    }
    sint64 size = allocatedSize(type);
    if (getTypeMainType(type) == TYP_BITSTR && !i64ismax(size))
        size = i64divl(i64addl(size, BITS - 1), BITS);
    printfToF(fiTyp, "%s st [%s%s];\n", home, i64tostr(size).c_str(),
              isRestrCharStringType(type) ? "+1" : "");
}

void warnOfUnknownLeaf(AsnType *type) {
    Text path;
    Text word;
    std::fprintf(stderr, "%s:%d: warning: Unknown leaf type: %s\n",
                 getModuleFilePath(path, nullptr, getModuleOfType(type), nullptr).c_str(),
                 getTypeDefinitionLine(type),
                 getTypeMainTypeStri(word, nullptr, type, nullptr).c_str());
    taviWarn(getModuleOfType(type), getTypeDefinitionLine(type), SUMMARY_INTERNAL_ERROR,
             "Unknown leaf type");
}

/* "argument_OPERATION": the component's name, or the field's for its own type, and the
   class. An element has no name of its own and keeps its place in the field. */
Text fieldStructName(AsnType *type, ShapePlace &place) {
    Text whole, name;
    if (getFatherOfTypeComp(type) == nullptr)
        getObjClassFieldId(name, nullptr, place.field, nullptr);
    else
        name = orEmpty(getMetaCompId(type));
    if (name.empty())
        return cTypeId(whole, nullptr, type, nullptr);
    getDefObjClassId(whole, (name + "_").c_str(), place.objClass, nullptr);
    if (place.fieldStructs->insert(whole).second)
        return whole;
    /* Another field has a structure of this name, maybe of the same type. */
    Text field;
    getObjClassFieldId(field, nullptr, place.field, nullptr);
    getDefObjClassId(whole, (name + "_" + field + "_").c_str(), place.objClass, nullptr);
    for (int nr = 2; !place.fieldStructs->insert(whole).second; ++nr) {
        const Text numbered = name + std::to_string(nr) + "_" + field + "_";
        getDefObjClassId(whole, numbered.c_str(), place.objClass, nullptr);
    }
    return whole;
}

/* struct t_Msg { */
void genStructPrefix(AsnType *type, ShapePlace &place) {
    if (place.objClass != nullptr)
        setBETypeInfoNames(type, fieldStructName(type, place).c_str());
    printfToF(fiTyp, "struct t_%s ", orEmpty(getMetaTypeId(type)));
    wToF(fiTyp, "{\n");
    ++fArr[fiTyp].indent;
}

void genStructPostfix() {
    --fArr[fiTyp].indent;
    wToF(fiTyp, "}");
}

void genLeafType(AsnType *type, ShapePlace &place) {
    if (testTypeOption(type, OPT_SKIPPED)) {
        wToF(fiTyp, getMetaBaseTypeId(type));
    } else if (isStructuredType(type)) {
        genStructPrefix(type, place);
        printfToF(fiTyp, "%s eitherthisfield;\n", cSpecialType(SPECIAL_NOBODY_USES));
        genStructPostfix();
    } else if (cIsPredefinedType(type)) {
        wToF(fiTyp, getMetaBaseTypeId(type));
    } else if (cIsStaticString(type) || cIsDynamicString(type)) {
        genStructPrefix(type, place);
        genControlMember(type);
        genLeafStringHome(type);
        genStructPostfix();
    } else {
        warnOfUnknownLeaf(type);
    }
}

/* A list's element stands inside a comment, since its C type is LIST whatever it holds. */
void genNonLeafPrefix(AsnType *type, ShapePlace &place) {
    if (cIsLinkedList(type)) {
        wToF(fiTyp, "LIST /*\n");
        ++fArr[fiTyp].indent;
        return;
    }
    genStructPrefix(type, place);
    genControlMember(type);
    if (isPlainChoice(type)) {
        wToF(fiTyp, "union ");
        wToF(fiTyp, "{\n");
        ++fArr[fiTyp].indent;
    }
}

void genNonLeafPostfix(AsnType *type) {
    if (cIsLinkedList(type)) {
        --fArr[fiTyp].indent;
        wToF(fiTyp, "*/");
        return;
    }
    if (isPlainChoice(type)) {
        --fArr[fiTyp].indent;
        wToF(fiTyp, "} i1;\n");
    }
    genStructPostfix();
}

void genNonLeafType(AsnType *type, ShapePlace &place) {
    if (cIsFrameType(type)) {
        wToF(fiTyp, getMetaBaseTypeId(type));
        return;
    }
    genNonLeafPrefix(type, place);
    forEachTypeCompOrElem(type, [&place](AsnType *father, AsnType *son, int) {
        genNonLeafContents(father, son, place);
    });
    genNonLeafPostfix(type);
}

/* "* val.stru;": the member of an ASNHOME, in a comment. */
void genHomeMember(AsnType *son) {
    Text text;
    if (cIsPtrAsnHomeMember(son))
        wToF(fiTyp, "*");
    wToF(fiTyp, cAsnHomeMember(text, " val.", son, ";\n"));
}

void genMemberType(AsnType *father, AsnType *son, ShapePlace &place) {
    Text text;
    if (cIsLinkedList(father)) {
        wToF(fiTyp, getMetaBaseTypeId(son));
    } else if (testTypeOption(son, OPT_HOME)) {
        wToF(fiTyp, "ASNHOME /*\n");
        ++fArr[fiTyp].indent;
        wToF(fiTyp, getMetaBaseTypeId(son));
        genHomeMember(son);
        --fArr[fiTyp].indent;
        wToF(fiTyp, "*/ ");
    } else if (getTypeMainType(son) == TYP_OPEN) {
        wToF(fiTyp, cIsFrameType(son) ? "FRAME_PTR " : "ANY ");
    } else if (cIsDefinedBaseType(son)) {
        wToF(fiTyp, cTypeIdForTypeCompDef(text, nullptr, son, nullptr));
    } else if (isTypeExtensionmarker(son)) {
        wToF(fiTyp, getMetaBaseTypeId(son));
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
        printfToF(fiTyp, "%s;\n", getMetaMemberName(son).c_str());
    } else if (isElemType(son)) {
        wToF(fiTyp, pointerText(son));
        if (testTypeOption(father, OPT_DYNAMIC_ARRAY))
            wToF(fiTyp, "* elem");
        else
            int64ToF(fiTyp, " elem [", allocatedSize(father), "]");
        wToF(fiTyp, ";\n");
    } else {
        wToF(fiTyp, pointerText(son));
        printfToF(fiTyp, " %s;\n", getMetaMemberName(son).c_str());
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
    if (cHasControlMember(type)) {
        Text text;
        wToF(fiTyp, getControlMemberDef(text, type));
    }
    if (const int form = cIgnoredCountVF(type); form != VF_NONE)
        printfToF(fiTyp, "%s nIgnored;\n", orEmpty(getLangType(form)));
}

void genNonLeafContents(AsnType *father, AsnType *son, ShapePlace &place) {
    const NestingGuard guard(&place.depth, son->posModule);
    printTypeEmbeddingOptions(fiTyp, son, TED_TYP_BEFORE);
    genMemberType(father, son, place);
    genMemberTail(father, son);
    printTypeEmbeddingOptions(fiTyp, son, TED_TYP_BEHIND);
}
