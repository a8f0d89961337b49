#include "model/typewalk.h"

#include "model/backvar.h"
#include "model/hooks.h"
#include "model/modules.h"
#include "model/typechain.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "model/valuesets.h"
#include "store/classify.h"
#include "store/ketramac.h"
#include "store/records.h"

bool glbCreateBETypMetaRecFlag = true;

namespace {

/* All handles, and those that were given back; their memory stays valid, so giving one back twice
   does no harm. A fatal error leaves some in use, with all that they own: the list is never
   destroyed. */
std::vector<std::unique_ptr<AsnType>> &allTypes = *new std::vector<std::unique_ptr<AsnType>>;
std::vector<AsnType *> freeTypes;

/* A meta record is being made, and no handle may be filled meanwhile. */
bool constructingMetaRec = false;

/* Everything back to its start, but the memory of the vectors is kept for the next use. */
void emptyHandle(AsnType *type) {
    AsnType empty;
    empty.tagEntries = std::move(type->tagEntries);
    empty.tags = std::move(type->tags);
    empty.constraintList.places = std::move(type->constraintList.places);
    empty.siblings = std::move(type->siblings);
    empty.tagEntries.clear();
    empty.tags.clear();
    empty.constraintList.places.clear();
    empty.siblings.clear();
    *type = std::move(empty);
}

bool kindHasTypes(int kind) {
    switch (kind) {
    case KIND_TYPE:
    case KIND_CLASS:
    case KIND_VALUE_SET:
    case KIND_OBJECT_SET:
    case KIND_COMPONENT:
    case KIND_FIELD:
        return true;
    default:
        return false;
    }
}

/* Does a walk of `kind` take the current TNode? It moves. */
bool isTNodeOfKind(int kind) {
    const bool setLike = kind == KIND_VALUE_SET || kind == KIND_OBJECT_SET;
    const bool classLike = kind == KIND_CLASS || kind == KIND_OBJECT_SET;
    if (kind != KIND_TYPE && setLike != isSetTNode())
        return false;
    skipTypes(true);
    return classLike == isClassKind(tNode.mainType);
}

std::uint32_t fatherOptions(const AsnType *father) {
    return father->base.optionBits;
}

/* The content of an alternative becomes that of the selection, which is the base. */
void takeOverSelection(AsnType *son) {
    TNode &base = son->base;
    const TNode selection = storedTNode(son->baseModule, son->baseRecord);
    base.compStatus = selection.compStatus;
    base.nodeFlags = selection.nodeFlags;
    base.entryFlags = selection.entryFlags;
    base.entryCategories = selection.entryCategories;
    base.stamp = selection.stamp;
}

/* The copy of the base record: its status as the position sees it, without the option bits that
   speak of the record alone. */
void initSonTNode(AsnType *son) {
    const bool instantiated = (son->firstTypeFlags & TYPE_INSTANTIATED) != 0;
    TNode &base = son->base;
    base = tNode;
    if (isSelectedContent(son))
        takeOverSelection(son);
    else if (base.compStatus == TCS_HEADER && base.nameIdx == 0)
        base.compStatus = son->compStatus; /* the type of a field of a predefined class */
    if (const TNode &position = storedTNode(son->posModule, son->posRecord);
        position.mainType == TYP_SELECTION)
        base.lineNr = position.lineNr;
    if ((son->firstTypeFlags & TYPE_TOP_LEVEL_INSTANTIATED) != 0) {
        base.compStatus = son->compStatus;
    } else if (base.compStatus == TCS_PARAM_HEAD && !instantiated &&
               (son->firstMainType == TYP_SYNONYM || son->firstMainType == TYP_SELECTION ||
                son->firstMainType == TYP_FIELDLIST)) {
        base.compStatus = TCS_HEADER;
    }
    base.optionBits &=
        ~(optionMask(OPT_EMBEDDED_TEXT) | optionMask(OPT_BIT_2) | optionMask(OPT_NAMING));
}

/* Option bits that follow from the type itself and from the records passed on the chain. */
void inheritChainOptions(TNode *base, std::uint32_t chainOptions) {
    const std::uint32_t stored = optionMask(OPT_LIST_HOME_STORED);
    if (isListKind(base->mainType) && (base->optionBits & stored) != 0) {
        base->optionBits &= ~stored;
        base->optionBits |= optionMask(OPT_LIST_HOME);
    }
    base->optionBits |= chainOptions & (optionMask(OPT_SKIPPED) | optionMask(OPT_NEAR));
}

/* Paths and indentation grow with each level that is no definition, so these are bounded by what
   people write, however much stack there is. */
void countInlineLevels(AsnType *son, const AsnType *father) {
    son->inlineLevel = father->base.compStatus == TCS_HEADER ? 0 : father->inlineLevel + 1;
    if (son->inlineLevel > MAX_NESTING)
        treeInconsistent(son->posModule);
}

/* An anonymous element goes by the name of its father; whatever is no definition belongs to the C
   type of its father. */
void inheritFatherNames(AsnType *son, const AsnType *father) {
    if (son->base.compStatus == TCS_HEADER)
        return;
    const bool instantiated = (son->firstTypeFlags & TYPE_INSTANTIATED) != 0;
    if (son->base.compStatus == TCS_MULTIPLE || (instantiated && son->compStatus == TCS_MULTIPLE)) {
        /* The levels of a definition count from itself, whatever refers to it. */
        son->defLevel = (father->base.compStatus == TCS_HEADER ? 0 : father->defLevel) + 1;
        if (father->base.compStatus != TCS_HEADER)
            son->compId = father->compId;
    }
    son->baseId = father->baseId;
}

/* How the member is held: home, pointer, components. */
void inheritFatherOptions(AsnType *son, const AsnType *father, std::uint32_t chainOptions) {
    const std::uint32_t home = optionMask(OPT_HOME);
    const std::uint32_t pointer = optionMask(OPT_POINTER);
    const std::uint32_t compsAsPointers = optionMask(OPT_COMPS_AS_POINTERS);
    const std::uint32_t compsPointer = optionMask(OPT_COMPS_POINTER);
    const std::uint32_t listHome = optionMask(OPT_LIST_HOME_STORED) | optionMask(OPT_LIST_HOME);
    const std::uint32_t ofFather = fatherOptions(father);
    const bool fatherIsStructure =
        isStructureKind(father->base.mainType) || isListKind(father->base.mainType);
    TNode &base = son->base;

    if ((ofFather & compsAsPointers) != 0 || (fatherIsStructure && (chainOptions & home) != 0))
        base.optionBits |= home;

    /* A reference to a recursive type becomes a pointer. */
    const bool recursiveReference = son->compStatus != TCS_HEADER &&
                                    base.compStatus == TCS_HEADER &&
                                    (son->firstTypeFlags & TYPE_RECURSIVE) != 0 &&
                                    (base.optionBits & optionMask(OPT_SKIPPED)) == 0;
    if ((ofFather & compsPointer) != 0 || (fatherIsStructure && (chainOptions & pointer) != 0) ||
        recursiveReference)
        base.optionBits |= pointer;

    if ((ofFather & (compsPointer | listHome)) != 0)
        base.optionBits &= ~compsAsPointers;
    if ((ofFather & (compsAsPointers | listHome | optionMask(OPT_FRAME))) != 0)
        base.optionBits &= ~pointer;
}

void makeMetaRec(AsnType *son) {
    son->metaRec = nullptr;
    if (!glbCreateBETypMetaRecFlag)
        return;
    if (constructingMetaRec)
        fatalError(FATAL_INTERNAL, "Type iterator called inside BETypMetaRec constructor.");
    const WalkCursors kept = son->walkModule->cursors;
    constructingMetaRec = true;
    if (modelHooks.newBETypMetaRec != nullptr)
        son->metaRec = modelHooks.newBETypMetaRec(son);
    constructingMetaRec = false;
    son->walkModule->cursors = kept;
}

} // namespace

AsnType *newAsnType(AsnModule *walkModule, AsnModule *ownerModule) {
    if (freeTypes.empty()) {
        allTypes.push_back(std::make_unique<AsnType>());
        freeTypes.push_back(allTypes.back().get());
    }
    AsnType *type = freeTypes.back();
    freeTypes.pop_back();
    type->walkModule = walkModule;
    type->ownerModule = ownerModule;
    type->live = true;
    return type;
}

void clearAsnType(AsnType *type) {
    type->live = false;
    if (type->metaRec != nullptr && modelHooks.deleteBETypMetaRec != nullptr)
        modelHooks.deleteBETypMetaRec(type, type->metaRec);
    delIntegerValueSet(type->valueSet);
    emptyHandle(type);
    type->live = true;
}

void delAsnType(AsnType *type) {
    if (type == nullptr || !type->live)
        return;
    clearAsnType(type);
    type->live = false;
    freeTypes.push_back(type);
}

void getTypePathN(AsnType *father, AsnType *son, int compNr) {
    const NodePlace position = saveNodeContext(REC_TNODE);
    int tagState = TAG_MODE_EXPLICIT;
    const ChainOptions chain = initSon(son, father, &tagState);
    const NodePlace content = saveNodeContext(REC_TNODE);
    getTagsAndEmbeddingOpts(son, &tagState);
    initSonTags(father, son, tagState, compNr);
    initSonTNode(son);
    addConstraint(son);
    inheritChainOptions(&son->base, chain.bits);
    if (father != nullptr) {
        countInlineLevels(son, father);
        inheritFatherNames(son, father);
        son->path = typePathInUse() ? getPath() : nullptr;
        inheritFatherOptions(son, father, chain.bits);
    }
    makeMetaRec(son);
    /* Options are applied last, since the meta record that takes them needs the finished handle. */
    if (chain.written)
        applyChainOptions(son, position);
    else
        restoreNodeContext(REC_TNODE, content);
}

bool nextTNode(AsnModule *module, int kind, bool withSkipped) {
    if (!kindHasTypes(kind))
        return false;
    RecNr &cursor = module->cursors[static_cast<std::size_t>(kind)];
    ChainGuard guard(REC_TNODE);
    while (cursor != 0) {
        guard.step(module->modRec);
        const RecNr rec = cursor;
        if (takeTNode(module, kind, rec, withSkipped))
            return true;
        readRec(module->modRec, REC_TNODE, rec);
        cursor = tNode.next;
    }
    return false;
}

bool takeTNode(AsnModule *module, int kind, RecNr rec, bool withSkipped) {
    if (!kindHasTypes(kind) || rec == 0)
        return false;
    readRec(module->modRec, REC_TNODE, rec);
    if (tNode.skipInWalk != 0 && !withSkipped)
        return false;
    if (!isTNodeOfKind(kind))
        return false;
    readRec(module->modRec, REC_TNODE, rec);
    module->cursors[static_cast<std::size_t>(kind)] = tNode.next;
    return true;
}

AsnType *governorForAsnValue(ModRec *valueModule, std::int32_t moduleNr, RecNr typeRec) {
    AsnModule *module = newAsnModule(getModPtr(valueModule, moduleNr));
    if (!takeTNode(module, KIND_TYPE, typeRec, true) &&
        !takeTNode(module, KIND_VALUE_SET, typeRec, true)) {
        delAsnModule(module);
        return nullptr;
    }
    AsnType *governor = newAsnType(module, module);
    governor->partial = true;
    getTypePath(nullptr, governor);
    return governor;
}

bool setCreateBETypMetaFlag(bool flag) {
    const bool before = glbCreateBETypMetaRecFlag;
    glbCreateBETypMetaRecFlag = flag;
    return before;
}
