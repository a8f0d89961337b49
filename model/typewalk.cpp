#include "model/typewalk.h"

#include "model/hooks.h"
#include "model/position.h"
#include "model/setarithmetic.h"
#include "model/typechain.h"
#include "model/typepath.h"
#include "model/typequeries.h"

namespace {

/* Handles of types get a meta record. */
bool createsMetaRecs = true;

/* A meta record is being made, and no handle may be filled meanwhile. */
bool constructingMetaRec = false;

/* The untagged types that get an automatic tag on top of what they have; FIELDLIST is one that
   could not be resolved. */
void addOutermostTag(AsnType *son, int compNr) {
    DynaNode &entry = entryForTag(son);
    entry.tag = {TAG_CTX, compNr};
    son->nrOfTags = 1;
}

void replaceOutermostTag(AsnType *son, int compNr) {
    std::size_t outermost = 0;
    while (son->tagEntries[outermost].tag.tagClass == TAG_CLASS_NONE)
        ++outermost;
    son->tagEntries[outermost].tag = {TAG_CTX, compNr};
}

/* Do AUTOMATIC TAGS apply to the sons of `father`? What COMPONENTS OF brings in follows the
   structure in which that stands. */
bool hasAutomaticTags(const AsnType *father) {
    if (father == nullptr)
        return false;
    if (father->compStatus == TCS_COMPOF)
        father = father->father;
    return father != nullptr && (father->base.typeFlags & TYPE_AUTOMATIC_TAGS) != 0;
}

void initSonTags(AsnType *father, AsnType *son, int tagState, int compNr) {
    const int mainType = tNode.mainType;
    const bool untagged = mainType == TYP_CHOICE || mainType == TYP_ANY || mainType == TYP_OPEN;
    if (tagState == TAG_MODE_EXPLICIT && !untagged && mainType != TYP_FIELDLIST &&
        mainType != TYP_EXTENSION_MARKER) {
        const TypeRow &row = typeRow(mainType);
        entryForTag(son).tag = {row.tagClass, row.tagNumber};
    }
    for (const DynaNode &entry : son->tagEntries)
        son->nrOfTags += entry.tag.tagClass != TAG_CLASS_NONE;

    if (!hasAutomaticTags(father) || mainType == TYP_EXTENSION_MARKER)
        return;
    if (son->nrOfTags == 0)
        addOutermostTag(son, compNr);
    else
        replaceOutermostTag(son, compNr);
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
    TNode &base = son->base;
    base = tNode;
    if (isSelectedContent(son))
        takeOverSelection(son);
    else if (base.compStatus == TCS_HEADER && base.nameIdx == 0)
        base.compStatus = son->compStatus; /* the type of a field of a predefined class */
    if (const TNode &position = storedTNode(son->posModule, son->posRecord);
        position.mainType == TYP_SELECTION)
        base.lineNr = position.lineNr;
    settleBaseStatus(son);
    base.optionBits = inheritedBits(base.optionBits);
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
    if (son->base.compStatus == TCS_MULTIPLE || (isInstance(son) && son->compStatus == TCS_MULTIPLE)) {
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
    if (!createsMetaRecs)
        return;
    if (constructingMetaRec)
        fatalError(FATAL_INTERNAL, "Type iterator called inside BETypMetaRec constructor.");
    constructingMetaRec = true;
    if (modelHooks.newBETypMetaRec != nullptr)
        son->metaRec.reset(modelHooks.newBETypMetaRec(son));
    constructingMetaRec = false;
}

} // namespace

AsnType::AsnType(AsnModule *walked, AsnModule *owner) : TypePosition(walked, owner) {}
AsnType::~AsnType() = default;

void getTypePathN(AsnType *father, AsnType *son, int compNr) {
    const NodePlace position = saveNodeContext(REC_TNODE);
    const ChainOptions chain = initSon(son, father);
    const NodePlace content = saveNodeContext(REC_TNODE);
    initSonTags(father, son, chain.tagState, compNr);
    initSonTNode(son);
    inheritChainOptions(&son->base, chain.bits);
    if (father != nullptr) {
        countInlineLevels(son, father);
        inheritFatherNames(son, father);
        son->path = typePathInUse() ? getPath() : nullptr;
        inheritFatherOptions(son, father, chain.bits);
    }
    makeMetaRec(son);
    /* Options are applied last, since the meta record that takes them needs the finished handle. */
    if (chain.written && createsMetaRecs)
        applyChainOptions(son, position);
    else
        restoreNodeContext(REC_TNODE, content);
}

bool setCreateBETypMetaFlag(bool flag) {
    const bool before = createsMetaRecs;
    createsMetaRecs = flag;
    return before;
}
