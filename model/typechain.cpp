#include "model/typechain.h"

#include "model/backvar.h"
#include "model/beoptions.h"
#include "model/hooks.h"
#include "model/modules.h"
#include "model/typetables.h"
#include "options/ketracnf.h"
#include "store/classify.h"
#include "store/plainchain.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

/* What happens to a record before the chain leaves it. */
struct ChainWalk {
    AsnType *son = nullptr;
    bool gathers = false;           /* tags, constraints and endpoints; else options are applied */
    std::uint32_t chainOptions = 0; /* gathered */
    bool hasTexts = false;          /* a record passed has options or embedded text; gathered */
    int *tagState = nullptr;        /* given if it gathers */
    NodePlace *area = nullptr; /* last record before a parameterised detail; null: not wanted */
    /* The last selection, or definition that is the field of a class, if no definition came behind
       it: it is what has the content at the end of the chain. */
    NodePlace holder;
    bool first = true; /* the position has not been left yet */
};

void insDynaNode(AsnType *son) {
    DynaNode entry;
    entry.module = recJustRead[REC_TNODE].module;
    entry.record = recJustRead[REC_TNODE].nr;
    son->tagEntries.push_back(entry);
}

/* The last entry if it holds no tag yet, else a new one. */
DynaNode &entryForTag(AsnType *son) {
    if (son->tagEntries.empty() || son->tagEntries.back().tag.tagClass != TAG_CLASS_NONE)
        insDynaNode(son);
    return son->tagEntries.back();
}

void setEmbeddingOptionsFromTNode(AsnType *son) {
    insDynaNode(son);
    DynaNode &entry = son->tagEntries.back();
    entry.flags = DYNA_EMBEDDED_TEXT;
    entry.tedFirst = tNode.tedFirst;
    entry.tedLast = tNode.tedLast;
}

void narrowEndpoints(AsnType *son) {
    if (i64cmp(son->lowerEndpoint, tNode.lowerEndpoint) < 0)
        son->lowerEndpoint = tNode.lowerEndpoint;
    if (i64cmp(son->upperEndpoint, tNode.upperEndpoint) > 0)
        son->upperEndpoint = tNode.upperEndpoint;
}

/* The current record as a link of the chain. */
void getSynonymTypeInfo(AsnType *son, ChainWalk *walk) {
    walk->chainOptions |= tNode.optionBits;
    walk->hasTexts = walk->hasTexts || tNode.tedFirst != 0;
    getTagsAndEmbeddingOpts(son, walk->tagState);
    addConstraint(son);
    narrowEndpoints(son);
    ++son->chainDepth;
    const std::uint8_t form = tNode.typeOptions.definiteLength;
    if (getGlobalOptions(son->ownerModule)->definiteLen > LENGTH_DEFINITE &&
        form < LENGTH_FORM_NOT_SET && son->typeOptions.definiteLength == LENGTH_FORM_NOT_SET)
        son->typeOptions.definiteLength = form;
}

/* The options written on the current record. */
void getTypeSpecificBEOpts(AsnType *son, bool first, bool last) {
    if (!glbCreateBETypMetaRecFlag)
        return;
    forEachBEOption(currModule(REC_TNODE), tNode.tedFirst, tNode.tedLast,
                    [&](const char *text, const char *comment) {
                        if (comment != nullptr)
                            son->hasCommentOption = son->hasCommentOption || first;
                        else if (modelHooks.typeBEOptionOK != nullptr)
                            modelHooks.typeBEOptionOK(son, son->metaRec, text, last);
                    });
}

void leaveRecord(ChainWalk *walk) {
    const NodeContext kept(REC_TNODE);
    if (walk->gathers)
        getSynonymTypeInfo(walk->son, walk);
    else
        getTypeSpecificBEOpts(walk->son, walk->first, false);
}

/* Behind a reference: notes the new record, up to the first instantiation. Only an instantiation
   that is a definition of its own lends its name. */
void noteSynonymTarget(ChainWalk *walk) {
    if (walk->area == nullptr)
        return;
    const bool instantiated = isInstantiatedTNode();
    if (!instantiated || isTopLevelInstantiatedTNode())
        *walk->area = saveNodeContext(REC_TNODE);
    if (instantiated)
        walk->area = nullptr;
}

/* To the record that the current one refers to; false at the end of the chain. */
bool followChain(ChainWalk *walk) {
    if (tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
        leaveRecord(walk);
        followSynonymType();
        noteSynonymTarget(walk);
        if (tNode.compStatus == TCS_HEADER || tNode.compStatus == TCS_PARAM_HEAD)
            walk->holder = {};
        return true;
    }
    if (tNode.mainType == TYP_SELECTION && tNode.auxRecord != 0) {
        leaveRecord(walk);
        walk->holder = saveNodeContext(REC_TNODE);
        followTypeReference();
    } else if (tNode.mainType == TYP_FIELDLIST && tNode.auxRecord != 0) {
        leaveRecord(walk);
        if (tNode.compStatus == TCS_HEADER)
            walk->holder = saveNodeContext(REC_TNODE);
        skipFieldList();
        /* Fields of predefined classes have types that are definitions without a name. */
        if (tNode.compStatus == TCS_HEADER && tNode.nameIdx > 0)
            walk->holder = {};
    } else {
        return false;
    }
    if (walk->area != nullptr)
        *walk->area = saveNodeContext(REC_TNODE);
    return true;
}

/* What is passed by this has nothing to gather or to apply. */
void leapAlongChain(ChainWalk *walk) {
    const int references = leapOverPlainReferences();
    if (references == 0)
        return;
    if (walk->gathers)
        walk->son->chainDepth += references;
    if (walk->area != nullptr)
        *walk->area = saveNodeContext(REC_TNODE);
    walk->holder = {};
}

void goThroughSynonymChain(ChainWalk *walk) {
    ChainGuard guard(REC_TNODE);
    for (int references = 0; followChain(walk); ++references) {
        guard.step(currModule(REC_TNODE));
        walk->first = false;
        if (references >= FEW_REFERENCES)
            leapAlongChain(walk);
    }
}

/* From an instantiation to the parameterised definition. */
void readParameterisedDefinition() {
    readRec(getModPtr(currModule(REC_TNODE), tNode.refModule), REC_TNODE, tNode.refRecord);
}

void readTNodeForBegOfSynonymChain(const NodePlace &position) {
    restoreNodeContext(REC_TNODE, position);
    if (isInstantiatedTNode())
        readParameterisedDefinition();
}

void setFirstCompId(AsnType *son) {
    getFixRec(&son->compId, tNode.compStatus == TCS_HEADER ? KIND_TYPE : KIND_COMPONENT);
}

void initSonCommon(AsnType *son, AsnType *father) {
    setFirstCompId(son);
    son->path = nullptr;
    son->father = father;
    son->defLevel = 0;
    son->entryFlags = father == nullptr ? tNode.entryFlags : std::uint8_t{0};
    son->entryCategories = father == nullptr ? tNode.entryCategories : std::uint8_t{0};
    son->tagEntries.clear();
    son->tags.clear();
    son->lowerEndpoint = tNode.lowerEndpoint;
    son->upperEndpoint = tNode.upperEndpoint;
    son->nrOfConstraints = 0;
    son->nrOfLocalConstraints = 0;
    son->constraintList.places.clear();
    son->posModule = recJustRead[REC_TNODE].module;
    son->posRecord = recJustRead[REC_TNODE].nr;
    son->compNbr = 0;
    son->compStatus = tNode.compStatus;
    son->defaultValue = tNode.defaultValue;
    son->stamp = tNode.stamp;
    son->auxRecord = tNode.auxRecord;
    son->typeOptions = tNode.typeOptions;
    son->firstTypeFlags = tNode.typeFlags;
}

void initSonFromNormalTNode(AsnType *son, AsnType *father) {
    initSonCommon(son, father);
    son->firstMainType = tNode.mainType;
}

void initSonFromInstantiatedTNode(AsnType *son, AsnType *father) {
    const bool topLevel = isTopLevelInstantiatedTNode();
    initSonCommon(son, father);
    readParameterisedDefinition();
    son->firstMainType = tNode.mainType;
    son->typeOptions.definiteLength = tNode.typeOptions.definiteLength;
    unsigned flags = son->firstTypeFlags;
    flags |= tNode.typeFlags;
    flags |= TYPE_INSTANTIATED;
    if (topLevel)
        flags |= TYPE_TOP_LEVEL_INSTANTIATED;
    son->firstTypeFlags = static_cast<std::uint16_t>(flags);
}

/* The name of the C type. `area` is the last record before a parameterised detail. */
void setLastCompId(AsnType *son, const AsnType *father, const NodePlace &area) {
    const bool instantiated = (son->firstTypeFlags & TYPE_INSTANTIATED) != 0;
    if (son->baseModule == son->posModule && son->baseRecord == son->posRecord) {
        son->baseId = son->compId;
    } else if ((son->firstTypeFlags & TYPE_TOP_LEVEL_INSTANTIATED) != 0) {
        son->baseId = son->compId;
    } else if (instantiated && father != nullptr) {
        son->baseId = father->baseId;
    } else {
        const NodeContext kept(REC_TNODE);
        restoreNodeContext(REC_TNODE, area);
        getFixRec(&son->baseId, KIND_TYPE);
    }
}

/* The untagged types that get an automatic tag on top of what they have; FIELDLIST is one that
   could not be resolved. */
void addOutermostTag(AsnType *son, int compNr) {
    DynaNode &entry = entryForTag(son);
    entry.tag = {TAG_CTX, compNr};
    son->tags.assign(1, static_cast<int>(son->tagEntries.size()) - 1);
    son->nrOfTags = 1;
    son->nrOfLocalTags = 1;
}

void replaceOutermostTag(AsnType *son, int compNr) {
    son->tagEntries[static_cast<std::size_t>(son->tags.front())].tag = {TAG_CTX, compNr};
    son->nrOfLocalTags = 1;
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

} // namespace

ChainOptions initSon(AsnType *son, AsnType *father, int *tagState) {
    const NodePlace position = saveNodeContext(REC_TNODE);
    NodePlace area = position;
    const bool instantiated = isInstantiatedTNode();
    if (instantiated)
        initSonFromInstantiatedTNode(son, father);
    else
        initSonFromNormalTNode(son, father);
    son->chainDepth = 0;

    readTNodeForBegOfSynonymChain(position);
    ChainWalk walk;
    walk.son = son;
    walk.gathers = true;
    walk.tagState = tagState;
    walk.area = &area;
    goThroughSynonymChain(&walk);

    narrowEndpoints(son);
    const NodePlace content = saveNodeContext(REC_TNODE);
    son->contentModule = content.module;
    son->contentRecord = content.nr;
    son->isSelection =
        son->firstMainType == TYP_SELECTION ||
        (son->firstMainType == TYP_FIELDLIST && son->compStatus == TCS_HEADER);
    if (walk.holder.nr != 0)
        area = walk.holder;
    const NodePlace base = walk.holder.nr != 0 ? walk.holder : content;
    son->baseModule = base.module;
    son->baseRecord = base.nr;
    if (instantiated || (base.module == son->posModule && base.nr == son->posRecord))
        son->firstMainType = tNode.mainType;
    else if (son->isSelection)
        son->firstMainType = TYP_SYNONYM;
    if (son->isSelection)
        son->typeOptions = tNode.typeOptions;
    setLastCompId(son, father, area);
    return {walk.chainOptions, walk.hasTexts || tNode.tedFirst != 0};
}

void getTagsAndEmbeddingOpts(AsnType *son, int *tagState) {
    if ((tNode.optionBits & optionMask(OPT_EMBEDDED_TEXT)) != 0)
        setEmbeddingOptionsFromTNode(son);
    ModRec *module = currModule(REC_TNODE);
    ChainGuard guard(REC_TAG);
    for (RecNr nr = tNode.firstTagRec; nr != 0; nr = tagRec.next) {
        guard.step(module);
        readRec(module, REC_TAG, nr);
        if (*tagState == TAG_MODE_EXPLICIT)
            entryForTag(son).tag = {tagRec.tagClass, tagRec.tagNumber};
        *tagState = tagRec.tagMode;
    }
}

void addConstraint(AsnType *son) {
    if (tNode.constraintRec == 0)
        return;
    readRec(currModule(REC_TNODE), REC_SUB, tNode.constraintRec);
    son->constraintList.addFstNode();
    ++son->nrOfConstraints;
    if (son->chainDepth == 0)
        ++son->nrOfLocalConstraints;
}

bool isLocalTag(const AsnType *type, const DynaNode &entry) {
    return entry.module == type->posModule && entry.record == type->posRecord &&
           entry.tag.tagClass != TAG_UNI;
}

void initSonTags(AsnType *father, AsnType *son, int tagState, int compNr) {
    const int mainType = tNode.mainType;
    const bool untagged = mainType == TYP_CHOICE || mainType == TYP_ANY || mainType == TYP_OPEN;
    if (tagState == TAG_MODE_EXPLICIT && !untagged && mainType != TYP_FIELDLIST &&
        mainType != TYP_EXTENSION_MARKER) {
        const TypeRow &row = typeRow(mainType);
        entryForTag(son).tag = {row.tagClass, row.tagNumber};
    }
    son->tags.clear();
    son->nrOfLocalTags = 0;
    for (std::size_t i = 0; i < son->tagEntries.size(); ++i) {
        const DynaNode &entry = son->tagEntries[i];
        if (entry.tag.tagClass == TAG_CLASS_NONE)
            continue;
        son->tags.push_back(static_cast<int>(i));
        if (isLocalTag(son, entry))
            ++son->nrOfLocalTags;
    }
    son->nrOfTags = static_cast<int>(son->tags.size());

    if (!hasAutomaticTags(father) || mainType == TYP_EXTENSION_MARKER)
        return;
    if (son->nrOfTags == 0)
        addOutermostTag(son, compNr);
    else
        replaceOutermostTag(son, compNr);
}

void applyChainOptions(AsnType *son, const NodePlace &position) {
    readTNodeForBegOfSynonymChain(position);
    ChainWalk walk;
    walk.son = son;
    goThroughSynonymChain(&walk);
    const NodeContext base(REC_TNODE);
    getTypeSpecificBEOpts(son, walk.first, true);
}
