#include "model/compwalk.h"

#include <unordered_map>

#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "store/ketramac.h"
#include "store/records.h"

namespace {

/* Calls made for components inside one another; trees that people wrote need fewer than ten for
   each record. */
WalkBound compBound(100'000, 100);

bool isCompOf(const AsnType *type) {
    return type->compStatus == TCS_COMPOF;
}

RecNr &compCursor(AsnModule *module) {
    return module->cursors[KIND_COMPONENT];
}

/* A synonym definition shows no components of its own; an element is no component. */
bool hasComponents(const AsnType *type, bool compsOnly) {
    if (compsOnly && (type->base.nrOfComps == 0 || isListKind(type->base.mainType)))
        return false;
    return type->compStatus != TCS_HEADER || type->firstMainType != TYP_SYNONYM;
}

/* The extension marker ends what COMPONENTS OF brings in. */
bool endsCompOf(const AsnType *walked) {
    return isCompOf(walked) && tNode.mainType == TYP_EXTENSION_MARKER;
}

/* The next component of `walked` becomes the current TNode. */
bool nextCompTNode(const AsnType *walked, AsnModule *module) {
    if (nextTNode(module, KIND_COMPONENT, true) && !endsCompOf(walked))
        return true;
    compCursor(module) = 0;
    return false;
}

AsnType *noComp(AsnModule *module) {
    compCursor(module) = 0;
    return nullptr;
}

/* The records that a walk over the list of `type` visits, in order; the cursor ends at 0. */
std::vector<RecNr> collectComps(const AsnType *type) {
    std::vector<RecNr> records;
    compCursor(type->walkModule) = type->base.refRecord;
    ChainGuard guard(REC_TNODE);
    while (nextCompTNode(type, type->walkModule)) {
        guard.step(type->walkModule->modRec);
        records.push_back(recJustRead[REC_TNODE].nr);
    }
    return records;
}

/* What all levels of one walk share; they differ inside COMPONENTS OF only. */
struct SonWalk {
    AsnType *owner;
    CompCall compFunc;
    ElemCall elemFunc;
    bool revOrd;
    int *nr;                    /* counts automatic tags */
    ChainGuard sons{REC_TNODE}; /* each component stands in a type once */
};

void walkSons(SonWalk *walk, AsnType *walked, bool compsOnly);

void callForSon(SonWalk *walk, AsnType *son, int *number) {
    AsnType *owner = walk->owner;
    if (walk->compFunc) {
        owner->compCounter = *number;
        son->compNbr = *number;
        if (son->base.mainType == TYP_EXTENSION_MARKER)
            owner->extMarkerNbr = *number;
        walk->compFunc(owner, son, owner->compCounter);
    } else {
        son->compNbr = 0;
        walk->elemFunc(owner, son);
    }
    const int step = walk->revOrd ? -1 : 1;
    *number += step;
    owner->compCounter = *number;
    if (son->base.mainType != TYP_EXTENSION_MARKER) {
        owner->lastCompOptional = son->compStatus == TCS_OPTIONAL;
        *walk->nr += step;
    }
}

/* The components that a COMPONENTS OF stands for. They belong to the C type of the structure. */
void expandCompOf(SonWalk *walk, AsnType *walked, AsnType *son, int *number) {
    AsnModule *kept = son->walkModule;
    AsnModule *module = newAsnModule(son->contentModule);
    compCursor(module) = son->contentRecord;
    son->walkModule = module;
    son->baseId = walked->baseId;
    walkSons(walk, son, true);
    *number = walk->owner->compCounter;
    son->walkModule = kept;
    delAsnModule(module);
}

void visitSon(SonWalk *walk, AsnType *walked, AsnType *son, int *number) {
    if (isCompOf(walked)) {
        son->father = walk->owner;
        son->inCompOf = true;
    }
    AsnModule *module = son->walkModule;
    const RecNr cursor = compCursor(module);
    if (!isCompOf(son))
        callForSon(walk, son, number);
    else if (son->base.refRecord != 0)
        expandCompOf(walk, walked, son, number);
    compCursor(module) = cursor;
    if (isCompOf(walked)) {
        son->father = walked;
        son->inCompOf = false;
    }
}

/* The sons of `walked` as sons of the owner; its module handles are those of its components. */
void visitSons(SonWalk *walk, AsnType *walked, bool compsOnly) {
    AsnType *son = walk->revOrd ? lastTypeComp(walked, *walk->nr)
                                : firstTypeComp(walked, compsOnly, *walk->nr);
    if (!isCompOf(walked)) {
        walk->owner->lastCompOptional = false;
        /* The marker has a place among the components, but no tag number. */
        if (walk->revOrd && isTypeExtensionmarkerComp(walk->owner))
            --*walk->nr;
    }
    int number = walk->owner->compCounter;
    while (son != nullptr) {
        walk->sons.step(walked->posModule);
        compBound.step(walked->posModule);
        visitSon(walk, walked, son, &number);
        if (isListKind(walked->base.mainType)) {
            compCursor(son->walkModule) = 0;
            delAsnType(son);
            return;
        }
        son = walk->revOrd ? prevTypeComp(son, *walk->nr) : nextTypeComp(son, *walk->nr);
    }
}

/* A base in another module is walked with a handle on that module. */
void walkSons(SonWalk *walk, AsnType *walked, bool compsOnly) {
    const WalkLevel level(&compBound, walked->posModule, nestingLimit);
    ModRec *base = walked->contentModule;
    if (base == walked->posModule && base == walked->walkModule->modRec) {
        visitSons(walk, walked, compsOnly);
        return;
    }
    AsnModule *walkModule = walked->walkModule;
    AsnModule *ownerModule = walked->ownerModule;
    AsnModule *module = newAsnModule(base);
    walked->walkModule = module;
    walked->ownerModule = module;
    visitSons(walk, walked, compsOnly);
    walked->walkModule = walkModule;
    walked->ownerModule = ownerModule;
    delAsnModule(module);
}

/* Where a walk in reverse order starts. */
struct CompCounts {
    int all = 0;
    int tagged = 0; /* without the extension marker */
};

CompCounts countSons(AsnType *type) {
    CompCounts counts;
    forEachTypeCompQuietly(type, [&](AsnType *, AsnType *comp, int) {
        ++counts.all;
        counts.tagged += comp->base.mainType != TYP_EXTENSION_MARKER;
    });
    return counts;
}

} // namespace

AsnType *firstTypeComp(AsnType *type, bool compsOnly, int nr) {
    if (type == nullptr)
        return nullptr;
    AsnModule *module = type->walkModule;
    if (!hasComponents(type, compsOnly))
        return noComp(module);
    compCursor(module) = type->base.refRecord;
    if (!nextCompTNode(type, module))
        return nullptr;
    AsnType *comp = newAsnType(module, type->ownerModule);
    getTypePathN(type, comp, nr);
    return comp;
}

AsnType *nextTypeComp(AsnType *comp, int nr) {
    AsnType *father = comp->father;
    AsnModule *walkModule = comp->walkModule;
    AsnModule *ownerModule = comp->ownerModule;
    const RecNr steps = comp->walkSteps + 1;
    if (steps > recCount(walkModule->modRec, REC_TNODE))
        treeInconsistent(walkModule->modRec);
    clearAsnType(comp);
    if (!nextCompTNode(father, walkModule)) {
        delAsnType(comp);
        return nullptr;
    }
    comp->walkModule = walkModule;
    comp->ownerModule = ownerModule;
    comp->walkSteps = steps;
    getTypePathN(father, comp, nr);
    return comp;
}

AsnType *lastTypeComp(AsnType *type, int nr) {
    AsnModule *module = type->walkModule;
    if (!hasComponents(type, true))
        return noComp(module);
    std::vector<RecNr> siblings = collectComps(type);
    if (siblings.empty())
        return noComp(module);
    readRec(module->modRec, REC_TNODE, siblings.back());
    siblings.pop_back();
    compCursor(module) = siblings.empty() ? 0 : siblings.back();
    if (isTypeExtensionmarkerComp(type) && !isCompOf(type))
        --nr;
    AsnType *comp = newAsnType(module, type->ownerModule);
    comp->siblings = std::move(siblings);
    getTypePathN(type, comp, nr);
    return comp;
}

AsnType *prevTypeComp(AsnType *comp, int nr) {
    AsnType *father = comp->father;
    AsnModule *walkModule = comp->walkModule;
    AsnModule *ownerModule = comp->ownerModule;
    std::vector<RecNr> siblings = std::move(comp->siblings);
    clearAsnType(comp);
    const RecNr rec = compCursor(father->walkModule);
    while (!siblings.empty() && siblings.back() != rec)
        siblings.pop_back();
    if (rec == 0 || siblings.empty() || !takeTNode(walkModule, KIND_COMPONENT, rec, true)) {
        compCursor(walkModule) = 0;
        delAsnType(comp);
        return nullptr;
    }
    siblings.pop_back();
    compCursor(walkModule) = siblings.empty() ? 0 : siblings.back();
    comp->walkModule = walkModule;
    comp->ownerModule = ownerModule;
    comp->siblings = std::move(siblings);
    getTypePathN(father, comp, nr);
    return comp;
}

void forEachSon(AsnType *owner, AsnType *walked, CompCall compFunc, ElemCall elemFunc, bool revOrd,
                bool compsOnly, int *nr) {
    if (!compFunc && !elemFunc)
        fatalError(FATAL_NO_CALLBACK, nullptr);
    SonWalk walk{owner, compFunc, elemFunc, revOrd, nr, ChainGuard(REC_TNODE)};
    walkSons(&walk, walked, compsOnly);
}

void forEachTypeComp(AsnType *type, CompCall func) {
    int nr = 0;
    type->compCounter = 0;
    forEachSon(type, type, func, nullptr, false, true, &nr);
}

void forEachTypeCompQuietly(AsnType *type, CompCall func) {
    const int compCounter = type->compCounter;
    const bool lastCompOptional = type->lastCompOptional;
    const RecNr cursor = compCursor(type->walkModule);
    const bool createdMetaRecs = setCreateBETypMetaFlag(false);
    forEachTypeComp(type, func);
    setCreateBETypMetaFlag(createdMetaRecs);
    compCursor(type->walkModule) = cursor;
    type->compCounter = compCounter;
    type->lastCompOptional = lastCompOptional;
}

void forEachTypeCompRevOrd(AsnType *type, CompCall func) {
    requireCall(func);
    const CompCounts counts = countSons(type);
    int nr = counts.tagged - 1 + (isTypeExtensionmarkerComp(type) ? 1 : 0);
    type->compCounter = counts.all - 1;
    forEachSon(type, type, func, nullptr, true, true, &nr);
}

void forTypeElem(AsnType *type, ElemCall func) {
    requireCall(func);
    if (!isListKind(type->base.mainType))
        return;
    int nr = 0;
    type->compCounter = 0;
    forEachSon(type, type, nullptr, func, false, false, &nr);
}

void forEachTypeCompOrElem(AsnType *type, CompCall func) {
    int nr = 0;
    type->compCounter = 0;
    forEachSon(type, type, func, nullptr, false, !isListKind(type->base.mainType), &nr);
}

int nrOfWalkedComps(AsnType *type) {
    /* Asked for each component of a type, so a walk each time would cost the square of their
       number. */
    static std::unordered_map<NodePlace, int, PlaceHash> known;
    if (isListKind(type->base.mainType))
        return 1;
    if (isSynonymType(type))
        return type->base.nrOfComps;
    const auto [place, isNew] = known.try_emplace({type->baseModule, type->baseRecord}, 0);
    if (isNew)
        place->second = countSons(type).all;
    return place->second;
}
