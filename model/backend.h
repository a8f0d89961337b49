#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/services.h"
#include "options/naming.h"
#include "store/ketravar.h"

/* The handles of the back-end model: the only view of a syntax tree that a generator has.

   Handles come from new... functions and go back through del...; they are recycled, and a walk
   refills one handle for each step. A call-back borrows what it is given: it neither deletes nor
   keeps it. Fields are read through the functions of the topic headers (typewalk.h, typequeries.h, tags.h ...). */

struct BETypMetaRec;    /* the generator's record of a type */
struct IntegerValueSet; /* model/valuesets.h */

/* For each WalkKind the record that its walk visits next, 0 at the end; element 0 is unused. */
using WalkCursors = std::array<RecNr, KIND_COUNT>;

/* One visit to a module. */
struct AsnModule {
    ModRec *modRec = nullptr;                                    /* borrowed */
    const std::array<std::int32_t, REC_KINDS> *counts = nullptr; /* the header's record counts */
    WalkCursors cursors{}; /* walks that nest save and restore the cursor of their kind */
    bool live = false;     /* false once given back */
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

/* A type as it was met (its position) and as it is in the end (its base). */
struct AsnType {
    AsnModule *walkModule = nullptr; /* its cursors walk this type; borrowed, forEachSon swaps it */
    AsnModule *ownerModule = nullptr; /* getModuleOfType; its options apply; borrowed */
    AsnType *father = nullptr;        /* enclosing type, null at the top level; borrowed */

    ModRec *posModule = nullptr; /* the record at which the type was met */
    RecNr posRecord = 0;
    FixRec compId;               /* name of the position; its id is null if it has none */
    int compNbr = 0;             /* place among the components of the father; 0 outside a walk */
    std::int32_t compStatus = 0; /* CompStatus of the position */
    int defLevel = 0;            /* anonymous elements count one more than their father */
    int inlineLevel = 0;         /* types written in one another around this one */
    RecNr defaultValue = 0;      /* VNode of the position's DEFAULT, 0 without one */
    int stamp = 0;               /* copy of the position's stored stamp */
    int firstMainType = 0;       /* of the position; of an instantiation, of the base */
    RecNr auxRecord = 0;         /* of the position */
    std::uint16_t firstTypeFlags = 0; /* of the position, with the two instantiation bits */
    TypeOptions typeOptions;          /* of the position; the length form may come from the chain */

    ModRec *baseModule = nullptr; /* the record at which the synonym chain ends */
    RecNr baseRecord = 0;
    ModRec *contentModule = nullptr; /* where `base` was read: the base record, or the alternative */
    RecNr contentRecord = 0;         /* whose content a selection has */
    bool isSelection = false; /* the position is one, or defined as the type of a class field */
    FixRec baseId;                    /* name of the C type */
    std::uint8_t entryFlags = 0;      /* 0 for a type with a father */
    std::uint8_t entryCategories = 0; /* likewise */
    const char *path = nullptr; /* type name path in use when the handle was filled; borrowed */
    int pathLength = -1;        /* characters of it that lead to this type; -1: all that it holds */
    TNode base;                 /* the base record with inherited option bits */

    std::vector<DynaNode> tagEntries; /* in order of creation: from the position to the base */
    std::vector<int> tags;            /* places in tagEntries of the real tags, outermost first */
    int nrOfTags = 0;                 /* tags.size() */
    int nrOfLocalTags = 0;            /* written on the position itself, or automatic */

    int nrOfConstraints = 0;              /* places in constraintList */
    int nrOfLocalConstraints = 0;         /* the last ones in reading order: of the position */
    NodeList constraintList{REC_SUB, {}}; /* the base's is read first */
    int chainDepth = 0;                   /* records left along the synonym chain */
    sint64 lowerEndpoint;                 /* narrowest along the chain */
    sint64 upperEndpoint;
    IntegerValueSet *valueSet = nullptr; /* made at first use; owned */

    int compCounter = 0;           /* while components are walked: number of the present one */
    bool lastCompOptional = false; /* while components are walked: the one before is OPTIONAL */
    int extMarkerNbr = -1;         /* number of the extension marker, once a walk has met it */
    bool extMarkerSought = false;  /* a walk was made to find it */
    bool inCompOf = false;         /* shown to a call-back through COMPONENTS OF */
    RecNr walkSteps = 0;           /* siblings visited with this handle; bounds lists without end */
    std::vector<RecNr> siblings; /* of a walk in reverse order: its records, the first one first */

    bool hasCommentOption = false;   /* the position holds a comment option */
    BETypMetaRec *metaRec = nullptr; /* owned; null if partial or while none are made */
    bool live = false;               /* false once given back */
    bool partial = false;            /* serves only to describe something else: no meta record */
};
