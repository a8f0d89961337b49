#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/shortlist.h"
#include "options/naming.h"
#include "store/ketramac.h"
#include "store/ketravar.h"

/* The handles of the back-end model: the only view of a syntax tree that a generator has.

   A handle is an object in the scope that needs it: it is made for two modules, filled once from the
   current record, and gives back what it owns at the end of the scope. Walks make one for each step; a
   call-back borrows what it is given and doesn't keep it. Fields are read through the functions of the
   topic headers (typewalk.h, typequeries.h, tags.h ...). */

/* The generator's records. */
struct BETypMetaRec;
struct BEClassMetaRec;
struct IntegerValueSet; /* model/valuesets.h */

/* A module as generators see it: one handle for each, which lives as long as the module does. */
struct AsnModule {
    ModRec *modRec = nullptr; /* borrowed */
};

/* A tag as a call-back sees it; valid during the call. */
struct AsnTag {
    std::int32_t tagClass = TAG_CLASS_NONE; /* TagClass */
    std::int32_t tagNumber = -1;
};

/* DynaNode.flags: the TedRec range holds embedded text. */
inline constexpr std::uint8_t DYNA_EMBEDDED_TEXT = 2;

/* What one record along a synonym chain adds: a tag, embedded text, or both. */
struct DynaNode {
    ModRec *module = nullptr; /* of the record that made the entry */
    RecNr record = 0;
    AsnTag tag;             /* TAG_CLASS_NONE while the entry holds no tag */
    std::uint8_t flags = 0; /* DYNA_EMBEDDED_TEXT */
    RecNr tedFirst = 0;     /* valid with DYNA_EMBEDDED_TEXT */
    RecNr tedLast = 0;
};

using DynaNodes = ShortList<DynaNode, 2>;

/* Gives a generator's record back (model/hooks.h). */
struct DropMeta {
    void operator()(BETypMetaRec *meta) const;
    void operator()(BEClassMetaRec *meta) const;
};
template <typename Meta> using MetaOwner = std::unique_ptr<Meta, DropMeta>;

/* What all handles know: where a definition, a component or an element was met (its position), and
   where the references from there end (its base). `Node` is the record of its kind. */
template <typename Handle, typename Node> struct Position {
    explicit Position(AsnModule *walked = nullptr, AsnModule *owner = nullptr)
        : walkModule(walked), ownerModule(owner) {}
    Position(const Position &) = delete;
    Position &operator=(const Position &) = delete;

    AsnModule *walkModule;    /* of the record that led here; forEachSon swaps it */
    AsnModule *ownerModule;   /* getModuleOf...; its options apply */
    Handle *father = nullptr; /* what encloses it, null at the top level; borrowed */

    ModRec *posModule = nullptr; /* the record at which it was met */
    RecNr posRecord = 0;
    FixRec compId;               /* name of the position; its id is null if it has none */
    std::int32_t compStatus = 0; /* CompStatus or ValueStatus of the position */

    ModRec *baseModule = nullptr; /* the record at which the references end */
    RecNr baseRecord = 0;
    FixRec baseId; /* name of the base */
    Node base;     /* the base record with what it inherits */
};

/* The same for what TNodes define: types, classes and object sets. */
template <typename Handle> struct TypePosition : Position<Handle, TNode> {
    using Position<Handle, TNode>::Position;

    int firstMainType = 0;            /* of the position; of an instantiation, of the base */
    std::uint16_t firstTypeFlags = 0; /* of the position, with the two instantiation bits */
    TypeOptions typeOptions;          /* of the position; the length form may come from the chain */
};

struct AsnType : TypePosition<AsnType> {
    explicit AsnType(AsnModule *walked = nullptr, AsnModule *owner = nullptr);
    ~AsnType();

    int compNbr = 0;        /* place among the components of the father; 0 outside a walk */
    int defLevel = 0;       /* anonymous elements count one more than their father */
    int inlineLevel = 0;    /* types written in one another around this one */
    RecNr defaultValue = 0; /* VNode of the position's DEFAULT, 0 without one */
    int stamp = 0;          /* copy of the position's stored stamp */

    ModRec *contentModule = nullptr; /* where `base` was read: the base record, or the alternative */
    RecNr contentRecord = 0;         /* whose content a selection has */
    bool isSelection = false; /* the position is one, or defined as the type of a class field */
    std::uint8_t entryFlags = 0;      /* 0 for a type with a father */
    std::uint8_t entryCategories = 0; /* likewise */
    const char *path = nullptr; /* type name path in use when the handle was filled; borrowed */
    int pathLength = -1;        /* characters of it that lead to this type; -1: all that it holds */

    DynaNodes tagEntries; /* in order of creation: from the position to the base */
    int nrOfTags = 0;     /* those of them that hold a tag, outermost first */

    int nrOfConstraints = 0;              /* places in constraintList */
    int nrOfLocalConstraints = 0;         /* the last ones in reading order: of the position */
    NodeList constraintList{REC_SUB, {}}; /* the base's is read first */
    int chainDepth = 0;                   /* records left along the synonym chain */
    sint64 lowerEndpoint;                 /* narrowest along the chain */
    sint64 upperEndpoint;
    std::unique_ptr<IntegerValueSet> valueSet; /* made at first use */

    int compCounter = 0;           /* while components are walked: number of the present one */
    bool lastCompOptional = false; /* while components are walked: the one before is OPTIONAL */
    int extMarkerNbr = -1;         /* number of the extension marker, once a walk has met it */
    bool extMarkerSought = false;  /* a walk was made to find it */
    bool inCompOf = false;         /* shown to a call-back through COMPONENTS OF */

    MetaOwner<BETypMetaRec> metaRec; /* null if partial or while none are made */
    bool partial = false;            /* serves only to describe something else: no meta record */
};

/* Questions that all handles answer alike, and fields of classes; types have names of their own for
   some. "Ref" is the ASN.1 name and empty for what has none, "Id" that of C. */

/* The module whose options apply. */
template <typename Handle> AsnModule *getModuleOf(const Handle *handle) {
    return handle->ownerModule;
}
template <typename Handle> Text getRefOf(const Handle *handle) {
    return orEmpty(handle->compId.id);
}
template <typename Handle> Text getBaseRefOf(const Handle *handle) {
    return orEmpty(handle->baseId.id);
}
template <typename Handle> Text getIdOf(const Handle *handle) {
    return printFixRec(handle->compId);
}
/* `bit` is a TypeOption. */
template <typename Handle> bool testOptionOf(const Handle *handle, int bit) {
    return testOptionBit(handle->base.optionBits, bit);
}
