#include "model/compwalk.h"

#include <unordered_map>

#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "model/walk.h"
#include "store/ketramac.h"

namespace {

int compDepth = 0;

bool isCompOf(const AsnType *type) {
    return type->compStatus == TCS_COMPOF;
}

/* Which sons a walk shows, and in which order. */
enum class Sons {
    COMPS,          /* components alone */
    COMPS_REVERSED, /* from the last to the first */
    ALL,            /* the element of a list too */
};

/* A synonym definition shows no components of its own; an element is no component. */
bool hasSons(const AsnType *type, Sons sons) {
    if (sons != Sons::ALL && (type->base.nrOfComps == 0 || isListKind(type->base.mainType)))
        return false;
    return type->compStatus != TCS_HEADER || type->firstMainType != TYP_SYNONYM;
}

/* The records of the sons of one type, in the order of the walk. */
class SonList {
public:
    SonList(const AsnType *walked, Sons sons)
        : isCompOf_(isCompOf(walked)), isReversed_(sons == Sons::COMPS_REVERSED),
          module_(walked->contentModule),
          walk_(module_, KIND_COMPONENT, hasSons(walked, sons) ? walked->base.refRecord : 0) {
        while (isReversed_ && nextForward())
            reversed_.push_back(recJustRead[REC_TNODE].nr);
    }

    /* Makes the next one current; false at the end. */
    bool next() {
        if (!isReversed_)
            return nextForward();
        if (reversed_.empty())
            return false;
        readRec(module_, REC_TNODE, reversed_.back());
        reversed_.pop_back();
        return true;
    }

private:
    /* The extension marker ends what COMPONENTS OF brings in. */
    bool nextForward() {
        return walk_.next() && !(isCompOf_ && tNode.mainType == TYP_EXTENSION_MARKER);
    }

    bool isCompOf_;
    bool isReversed_;
    ModRec *module_;
    ListWalk walk_;
    std::vector<RecNr> reversed_; /* the next one last */
};

/* What all levels of one walk share; they differ inside COMPONENTS OF only. */
struct SonWalk {
    AsnType *owner;
    CompCall compFunc;
    ElemCall elemFunc;
    bool isReversed;
    int *nr;                    /* counts automatic tags */
    ChainGuard sons{REC_TNODE}; /* each component stands in a type once */
};

void walkSons(SonWalk *walk, AsnType *walked, Sons shown);

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
    const int step = walk->isReversed ? -1 : 1;
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
    son->walkModule = getAsnModule(son->contentModule);
    son->baseId = walked->baseId;
    walkSons(walk, son, walk->isReversed ? Sons::COMPS_REVERSED : Sons::COMPS);
    *number = walk->owner->compCounter;
    son->walkModule = kept;
}

void visitSon(SonWalk *walk, AsnType *walked, AsnType *son, int *number) {
    if (isCompOf(walked)) {
        son->father = walk->owner;
        son->inCompOf = true;
    }
    if (!isCompOf(son))
        callForSon(walk, son, number);
    else if (son->base.refRecord != 0)
        expandCompOf(walk, walked, son, number);
}

/* The sons of `walked` as sons of the owner; its module handles are those of its components. */
void visitSons(SonWalk *walk, AsnType *walked, Sons shown) {
    SonList sons(walked, shown);
    if (!isCompOf(walked)) {
        walk->owner->lastCompOptional = false;
        /* The marker has a place among the components, but no tag number. */
        if (walk->isReversed && isTypeExtensionmarkerComp(walk->owner))
            --*walk->nr;
    }
    int number = walk->owner->compCounter;
    while (sons.next()) {
        AsnType son(walked->walkModule, walked->ownerModule);
        getTypePathN(walked, &son, *walk->nr);
        walk->sons.step(walked->posModule);
        visitSon(walk, walked, &son, &number);
        if (isListKind(walked->base.mainType))
            return;
    }
}

/* A base in another module is walked with the handle on that module. */
void walkSons(SonWalk *walk, AsnType *walked, Sons shown) {
    const NestingGuard level(&compDepth, walked->posModule);
    ModRec *base = walked->contentModule;
    if (base == walked->posModule && base == walked->walkModule->modRec) {
        visitSons(walk, walked, shown);
        return;
    }
    AsnModule *walkModule = walked->walkModule;
    AsnModule *ownerModule = walked->ownerModule;
    walked->walkModule = walked->ownerModule = getAsnModule(base);
    visitSons(walk, walked, shown);
    walked->walkModule = walkModule;
    walked->ownerModule = ownerModule;
}

/* The engine of the walks: calls for the sons of `type`. `nr` counts automatic tags. One call-back is
   given. */
void forEachSon(AsnType *type, CompCall compFunc, ElemCall elemFunc, Sons shown, int nr) {
    if (!compFunc && !elemFunc)
        fatalError(FATAL_NO_CALLBACK, nullptr);
    SonWalk walk{type, compFunc, elemFunc, shown == Sons::COMPS_REVERSED, &nr};
    walkSons(&walk, type, shown);
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

void forEachTypeComp(AsnType *type, CompCall func) {
    type->compCounter = 0;
    forEachSon(type, func, nullptr, Sons::COMPS, 0);
}

void forEachTypeCompQuietly(AsnType *type, CompCall func) {
    const int compCounter = type->compCounter;
    const bool lastCompOptional = type->lastCompOptional;
    const bool createdMetaRecs = setCreateBETypMetaFlag(false);
    forEachTypeComp(type, func);
    setCreateBETypMetaFlag(createdMetaRecs);
    type->compCounter = compCounter;
    type->lastCompOptional = lastCompOptional;
}

void forEachTypeCompRevOrd(AsnType *type, CompCall func) {
    requireCall(func);
    const CompCounts counts = countSons(type);
    type->compCounter = counts.all - 1;
    forEachSon(type, func, nullptr, Sons::COMPS_REVERSED,
               counts.tagged - 1 + (isTypeExtensionmarkerComp(type) ? 1 : 0));
}

void forTypeElem(AsnType *type, ElemCall func) {
    requireCall(func);
    if (!isListKind(type->base.mainType))
        return;
    type->compCounter = 0;
    forEachSon(type, nullptr, func, Sons::ALL, 0);
}

void forEachTypeCompOrElem(AsnType *type, CompCall func) {
    type->compCounter = 0;
    forEachSon(type, func, nullptr, isListKind(type->base.mainType) ? Sons::ALL : Sons::COMPS, 0);
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
