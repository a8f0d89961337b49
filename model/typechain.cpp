#include "model/typechain.h"

#include "model/hooks.h"
#include "model/modules.h"
#include "model/position.h"
#include "options/catalogue.h"
#include "options/ketracnf.h"
#include "store/classify.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

/* What happens to a record before the chain leaves it. */
struct ChainWalk {
    AsnType *son = nullptr;
    bool gathers = false;      /* tags, constraints and endpoints; else options are applied */
    ChainOptions options;      /* gathered */
    NodePlace *area = nullptr; /* last record before a parameterised detail; null: not wanted */
    /* The last selection, or definition that is the field of a class, if no definition came behind
       it: it is what has the content at the end of the chain. */
    NodePlace holder;
};

void insDynaNode(AsnType *son) {
    DynaNode entry;
    entry.module = recJustRead[REC_TNODE].module;
    entry.record = recJustRead[REC_TNODE].nr;
    son->tagEntries.push_back(entry);
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

/* What the tags of the current record add. */
void getTags(AsnType *son, int *tagState) {
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

/* What every record of the chain adds to `son`, the base too. */
void gatherRecord(AsnType *son, ChainOptions *options) {
    options->written = options->written || tNode.tedFirst != 0;
    if ((tNode.optionBits & optionMask(OPT_EMBEDDED_TEXT)) != 0)
        setEmbeddingOptionsFromTNode(son);
    getTags(son, &options->tagState);
    addConstraint(son);
    narrowEndpoints(son);
}

/* The current record as a link of the chain. */
void gatherLink(AsnType *son, ChainOptions *options) {
    gatherRecord(son, options);
    options->bits |= tNode.optionBits;
    ++son->chainDepth;
    const std::uint8_t form = tNode.typeOptions.definiteLength;
    if (getGlobalOptions(son->ownerModule)->definiteLen > LENGTH_DEFINITE &&
        form < LENGTH_FORM_NOT_SET && son->typeOptions.definiteLength == LENGTH_FORM_NOT_SET)
        son->typeOptions.definiteLength = form;
}

/* The options written on the current record. */
void getTypeSpecificBEOpts(AsnType *son, bool last) {
    if (modelHooks.typeBEOptionOK == nullptr)
        return;
    forEachBEOption(currModule(REC_TNODE), tNode.tedFirst, tNode.tedLast, [&](const char *text) {
        modelHooks.typeBEOptionOK(son, son->metaRec.get(), text, last);
    });
}

void leaveRecord(ChainWalk *walk) {
    const NodeContext kept(REC_TNODE);
    if (walk->gathers)
        gatherLink(walk->son, &walk->options);
    else
        getTypeSpecificBEOpts(walk->son, false);
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
        if (references >= FEW_REFERENCES)
            leapAlongChain(walk);
    }
}

void initSonPosition(AsnType *son, AsnType *father) {
    son->defaultValue = tNode.defaultValue;
    son->stamp = tNode.stamp;
    son->entryFlags = father == nullptr ? tNode.entryFlags : std::uint8_t{0};
    son->entryCategories = father == nullptr ? tNode.entryCategories : std::uint8_t{0};
    son->lowerEndpoint = tNode.lowerEndpoint;
    son->upperEndpoint = tNode.upperEndpoint;
    takePosition(son, father, tNode.compStatus == TCS_HEADER ? KIND_TYPE : KIND_COMPONENT);
}

} // namespace

/* The chain is gone through once for what is gathered, and again for options only if a record on
   the way has some: those need the meta record, which needs the names found in the first pass. */

DynaNode &entryForTag(AsnType *son) {
    if (son->tagEntries.empty() || son->tagEntries.back().tag.tagClass != TAG_CLASS_NONE)
        insDynaNode(son);
    return son->tagEntries.back();
}

ChainOptions initSon(AsnType *son, AsnType *father) {
    const NodePlace position = saveNodeContext(REC_TNODE);
    NodePlace area = position;
    initSonPosition(son, father);
    ChainWalk walk;
    walk.son = son;
    walk.gathers = true;
    walk.area = &area;
    goThroughSynonymChain(&walk);
    gatherRecord(son, &walk.options);

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
    if (isInstance(son) || base == position)
        son->firstMainType = tNode.mainType;
    else if (son->isSelection)
        son->firstMainType = TYP_SYNONYM;
    if (son->isSelection)
        son->typeOptions = tNode.typeOptions;
    takeBaseName(son, father, area, KIND_TYPE);
    return walk.options;
}

void applyChainOptions(AsnType *son, const NodePlace &position) {
    restoreNodeContext(REC_TNODE, position);
    readBeginOfChain();
    ChainWalk walk;
    walk.son = son;
    goThroughSynonymChain(&walk);
    const NodeContext base(REC_TNODE);
    getTypeSpecificBEOpts(son, true);
}

void forEachBEOption(ModRec *module, RecNr first, RecNr last, Call<void(const char *text)> func) {
    if (first == 0)
        return;
    for (RecNr nr = first; nr <= last; ++nr) {
        readRec(module, REC_TED, nr);
        if (tedRec.tedKind != TED_BACKEND_OPTION || tedRec.tedText == 0)
            continue;
        const char *text = getStri(module, tedRec.tedText);
        if (parseBECommentOption(text) == nullptr)
            func(text);
    }
}
