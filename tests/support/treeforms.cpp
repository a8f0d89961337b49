#include "tests/support/treederive.h"

#include <algorithm>

#include "store/ketramac.h"

/* What a compiler chooses: numbers of components, flags, endpoints, value forms. */

namespace {

constexpr std::int64_t MAX_STATIC_STRING = 256;
constexpr std::int64_t MAX_ARRAY = 32;
constexpr int MAX_SPLICE = 100;

std::size_t at(RecNr nr) {
    return static_cast<std::size_t>(nr - 1);
}

void setForm(TNode &node, ValueForm value, ValueForm control = VF_NONE) {
    node.valueFieldCode = static_cast<std::uint8_t>(value);
    node.controlFieldCode = static_cast<std::uint8_t>(control);
}

/* --- structures --- */

/* What the list of components says of a structure. */
struct CompFacts {
    int count = 0;
    int flags = 0;
};

/* Does a value of this type begin with a tag that isn't known from the type alone? */
bool isUntagged(TreePlace place) {
    for (int steps = 0; steps < MAX_SPLICE; ++steps) {
        if (place.rec().firstTagRec != 0)
            return false;
        TreePlace next = referredType(place);
        if (next.tree == nullptr)
            break;
        place = next;
    }
    int kind = place.rec().mainType;
    return kind == TYP_CHOICE || kind == TYP_ANY || kind == TYP_OPEN;
}

/* Adds the components from `first` on, those of COMPONENTS OF spliced in. */
void addFacts(CompFacts &facts, const TreeWriter *tree, RecNr first, bool isAutomatic, int depth) {
    for (RecNr nr = first; nr != 0 && depth < MAX_SPLICE; nr = tree->tNodes[at(nr)].next) {
        TreePlace place{tree, nr};
        const TNode &node = place.rec();
        if (node.compStatus == TCS_COMPOF) {
            TreePlace base = baseType(place);
            if (isStructureKind(base.rec().mainType))
                addFacts(facts, base.tree, base.rec().refRecord, isAutomatic, depth + 1);
            continue;
        }
        if (node.mainType == TYP_EXTENSION_MARKER && depth > 0)
            break; /* what COMPONENTS OF brings in ends at the marker */
        ++facts.count;
        if (node.mainType == TYP_EXTENSION_MARKER)
            facts.flags |= TYPE_EXTENSIBLE | TYPE_HAS_OPTIONAL; /* its presence needs a bit */
        else if (node.compStatus == TCS_OPTIONAL)
            facts.flags |= TYPE_HAS_OPTIONAL;
        else if (node.compStatus == TCS_MANDATORY)
            facts.flags |= TYPE_HAS_MANDATORY;
        if (!isAutomatic && isUntagged(place))
            facts.flags |= TYPE_HAS_UNTAGGED;
    }
}

void deriveStructure(TreePlace place, TNode &node) {
    CompFacts facts;
    bool isAutomatic = (node.typeFlags & TYPE_AUTOMATIC_TAGS) != 0 || isClassKind(node.mainType);
    addFacts(facts, place.tree, node.refRecord, isAutomatic, 0);
    node.nrOfComps = static_cast<std::int16_t>(facts.count);
    node.typeFlags = static_cast<std::uint16_t>(node.typeFlags | facts.flags);
    if (place.tree->typeNotes[at(place.nr)].formGiven || isClassKind(node.mainType))
        return;
    if (node.mainType == TYP_CHOICE)
        setForm(node, VF_STRU, facts.count <= 127 ? VF_I8 : VF_I16);
    else
        setForm(node, VF_STRU, facts.count <= 8 ? VF_UI8 : facts.count <= 16 ? VF_UI16 : VF_I32);
}

/* --- forms --- */

/* The smallest whole number that holds both ends; a missing end counts as one of 32 bits. */
ValueForm integerForm(Bounds bounds) {
    const std::int64_t low = bounds.low == MIN_VALUE ? INT32_MIN : bounds.low;
    const std::int64_t high =
        bounds.high == MAX_VALUE ? std::max<std::int64_t>(low, INT32_MAX) : bounds.high;
    struct Row {
        std::int64_t low, high;
        ValueForm form;
    };
    static constexpr Row rows[] = {
        {0, UINT8_MAX, VF_UI8},         {0, UINT16_MAX, VF_UI16}, {INT8_MIN, INT8_MAX, VF_I8},
        {INT16_MIN, INT16_MAX, VF_I16}, {0, UINT32_MAX, VF_UI32}, {INT32_MIN, INT32_MAX, VF_I32},
    };
    for (const Row &row : rows)
        if (low >= row.low && high <= row.high)
            return row.form;
    return VF_I64;
}

ValueForm sizeForm(std::int64_t high) {
    return high <= UINT8_MAX ? VF_UI8 : high <= UINT16_MAX ? VF_UI16 : VF_UI32;
}

void chooseStringForm(TNode &node, Bounds bounds) {
    const bool isBmp = node.mainType == TYP_BMPSTR;
    const bool isOpen = (node.typeFlags & TYPE_EXTENSIBLE) != 0;
    const ValueForm control = isOpen ? VF_UI32 : sizeForm(bounds.high);
    if (!isOpen && bounds.high <= MAX_STATIC_STRING) {
        if (bounds.low == bounds.high)
            setForm(node, VF_STAS0);
        else
            setForm(node, control == VF_UI8 ? VF_STAS8 : VF_STAS16, control);
    } else if (control == VF_UI16) {
        setForm(node, isBmp ? VF_BMPSTR16 : VF_DYNS16, control);
    } else {
        setForm(node, isBmp ? VF_BMPSTR : VF_DYNS, VF_UI32);
    }
}

void chooseListForm(TNode &node, Bounds bounds, const TreeWriter::TypeNotes &notes) {
    const bool isOpen = (node.typeFlags & TYPE_EXTENSIBLE) != 0;
    if (notes.arrayWanted || (!notes.listWanted && !isOpen && bounds.high <= MAX_ARRAY))
        setForm(node, VF_STRU, sizeForm(bounds.high));
    else
        setForm(node, VF_LIST);
}

void chooseForm(TNode &node, Bounds bounds, const TreeWriter::TypeNotes &notes) {
    switch (node.mainType) {
    case TYP_BOOLEAN:
        return setForm(node, VF_BOOL);
    case TYP_INTEGER:
    case TYP_ENUM:
        return setForm(node, integerForm(bounds));
    case TYP_REAL:
        return setForm(node, VF_REAL64);
    case TYP_NULL:
        return setForm(node, VF_NULL);
    case TYP_ANY:
        return setForm(node, VF_ANY);
    case TYP_OPEN:
        return setForm(node, VF_OPEN);
    case TYP_EMB_PDV:
        return setForm(node, VF_EMB_PDV);
    case TYP_OBJID:
        return setForm(node, VF_OBJI);
    case TYP_GENTIME:
    case TYP_UTCTIME:
        return setForm(node, VF_COMT);
    case TYP_EXTERNAL_1990:
        return setForm(node, VF_EXTERNAL_1990);
    case TYP_EXTERNAL_1994:
        return setForm(node, VF_EXTERNAL_1994);
    case TYP_SEQOF:
    case TYP_SETOF:
        return chooseListForm(node, bounds, notes);
    case TYP_BITSTR:
    case TYP_OCTSTR:
        return chooseStringForm(node, bounds);
    default:
        if (isRestrCharStringKind(node.mainType))
            chooseStringForm(node, bounds);
    }
}

} // namespace

void deriveTypes(TreeWriter &tree) {
    for (std::size_t i = 0; i < tree.tNodes.size(); ++i) {
        TNode &node = tree.tNodes[i];
        TreePlace place{&tree, static_cast<RecNr>(i + 1)};
        TreeWriter::TypeNotes &notes = tree.typeNotes[i];
        Bounds bounds = boundsOf(place);
        if (!notes.endpointsGiven) {
            TypeNode{&tree, place.nr}.endpoints(bounds.low, bounds.high);
            notes.endpointsGiven = false;
        }
        if (isStructureKind(node.mainType) || isClassKind(node.mainType)) {
            deriveStructure(place, node);
            continue;
        }
        if (node.mainType == TYP_SEQOF || node.mainType == TYP_SETOF)
            node.nrOfComps = 1;
        if (!notes.formGiven)
            chooseForm(node, bounds, notes);
    }
}

/* --- header --- */

namespace {

/* Appends options as consecutive records and gives their range. */
void placeOptions(TreeWriter &tree, const std::vector<TreeWriter::Option> &options, RecNr *first,
                  RecNr *last) {
    if (options.empty())
        return;
    *first = static_cast<RecNr>(tree.tedRecs.size()) + 1;
    for (const TreeWriter::Option &option : options)
        tree.tedRecs.push_back({option.kind, option.text});
    *last = static_cast<RecNr>(tree.tedRecs.size());
}

/* The kind at the end of a value's references within this tree. */
int kindOfValue(const TreeWriter &tree, RecNr nr) {
    for (int steps = 0; nr > 0 && steps < MAX_SPLICE; ++steps) {
        const VNode &value = tree.vNodes[at(nr)];
        if (value.valueKind != TYP_SYNONYM || value.refModule > 1)
            return value.valueKind;
        nr = value.refRecord;
    }
    return TYP_NONE;
}

} // namespace

void layOutHeader(TreeWriter &tree) {
    MNode &header = tree.header();
    for (RecNr nr = header.firstTNode; nr != 0; nr = tree.tNodes[at(nr)].next) {
        const TNode &node = tree.tNodes[at(nr)];
        const bool isSet = (node.nodeFlags & NODE_SET) != 0;
        const bool isClass = isClassKind(baseType({&tree, nr}).rec().mainType);
        if ((node.entryFlags & ENTRY_TYPE_FLAG) != 0)
            ++header.nrOfEntryTypes;
        if (!isSet && !isClass && node.skipInWalk == 0 && (node.nodeFlags & NODE_EXPORTED) != 0)
            ++header.nrOfVisibleTypes;
        if (isSet && isClass)
            ++header.nrOfObjectSets;
    }
    for (RecNr nr = header.firstVNode; nr != 0; nr = tree.vNodes[at(nr)].next)
        if (isClassKind(kindOfValue(tree, nr)))
            ++header.nrOfObjects;

    placeOptions(tree, tree.moduleOptions, &header.tedFirst, &header.tedLast);
    for (std::size_t i = 0; i < tree.tNodes.size(); ++i)
        placeOptions(tree, tree.typeNotes[i].options, &tree.tNodes[i].tedFirst,
                     &tree.tNodes[i].tedLast);
    for (std::size_t i = 0; i < tree.vNodes.size(); ++i)
        placeOptions(tree, tree.valueNotes[i].options, &tree.vNodes[i].tedFirst,
                     &tree.vNodes[i].tedLast);
}
