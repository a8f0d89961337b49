#include "store/classify.h"

#include <unordered_map>
#include <vector>

#include "store/records.h"

namespace {

struct Leap {
    NodePlace end;
    int references = 0; /* up to there */
};

bool isBareDefinition() {
    return tNode.compStatus == TCS_HEADER && tNode.constraintRec == 0 && tNode.firstTagRec == 0 &&
           tNode.optionBits == 0 && tNode.tedFirst == 0 &&
           tNode.typeOptions.definiteLength == LENGTH_FORM_NOT_SET;
}

/* From the current TNode to the one it refers to, if that is a plain reference; else it stays. */
bool followPlainReference() {
    if (tNode.mainType != TYP_SYNONYM || tNode.refRecord == 0 || isInstantiatedTNode() ||
        !isBareDefinition())
        return false;
    const NodePlace place = saveNodeContext(REC_TNODE);
    const sint64 lower = tNode.lowerEndpoint, upper = tNode.upperEndpoint;
    followSynonymType();
    if (tNode.compStatus == TCS_HEADER && !isInstantiatedTNode() &&
        i64cmp(lower, tNode.lowerEndpoint) <= 0 && i64cmp(upper, tNode.upperEndpoint) >= 0)
        return true;
    restoreNodeContext(REC_TNODE, place);
    return false;
}

} // namespace

/* Long chains of plain names would be gone through again for each handle on one of them, which
   is quadratic for a chain of definitions. So the end of each is remembered. */

int leapOverPlainReferences() {
    static std::unordered_map<NodePlace, Leap, PlaceHash> known;
    std::vector<NodePlace> passed;
    ChainGuard guard(REC_TNODE);
    Leap leap;
    for (;;) {
        const NodePlace place = saveNodeContext(REC_TNODE);
        if (const auto found = known.find(place); found != known.end()) {
            leap = found->second;
            break;
        }
        guard.step(place.module);
        if (!followPlainReference()) {
            leap.end = place;
            break;
        }
        passed.push_back(place);
    }
    for (auto place = passed.rbegin(); place != passed.rend(); ++place) {
        ++leap.references;
        known.emplace(*place, leap);
    }
    restoreNodeContext(REC_TNODE, leap.end);
    return leap.references;
}
