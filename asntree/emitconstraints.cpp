#include "asntree/emitter.h"

#include <algorithm>

#include "asntree/extents.h"
#include "asntree/reading.h"
#include "store/ketramac.h"

/* The constraint of a node, put together from what stands on it and what it inherits. The generator
   lets a record's own range take the place of what it inherits, and its own union extend that; so
   each node that restricts values or sizes carries an intersection with all of its parents. */

namespace asntree {

ExtensionView viewOf(const TreeState &ts) {
    return ts.settings.extConstraints == ExtConstraints::None ? ExtensionView::Open
                                                              : ExtensionView::Root;
}

bool isDropped(const TreeState &ts, const ConstraintSpec &spec) {
    return viewOf(ts) == ExtensionView::Open && isExtensible(spec);
}

RecNr operatorSub(TreeState &ts, SubKind kind, const std::vector<RecNr> &parts) {
    SubRec node;
    node.subKind = static_cast<std::uint8_t>(kind);
    for (std::size_t i = 0; i < parts.size(); ++i)
        (i == 0 ? node.first : ts.tree().sub(parts[i - 1]).next) = parts[i];
    return ts.tree().addSub(node);
}

namespace {

/* What an expression restricts. */
enum class Sort : std::uint8_t { Values, Sizes, Other };

Sort sortOf(const Constraint &constraint) {
    switch (constraint.kind) {
    case ConstraintKind::SingleValue:
    case ConstraintKind::Range:
    case ConstraintKind::Contained:
    case ConstraintKind::Group:
        return Sort::Values;
    case ConstraintKind::Size:
        return Sort::Sizes;
    case ConstraintKind::Union:
    case ConstraintKind::Intersection:
    case ConstraintKind::Except:
    case ConstraintKind::AllExcept: {
        const Sort sort = sortOf(*constraint.operands.front());
        const auto isOther = [sort](const Constraint *operand) { return sortOf(*operand) != sort; };
        return std::any_of(constraint.operands.begin() + 1, constraint.operands.end(), isOther)
                   ? Sort::Other
                   : sort;
    }
    default:
        return Sort::Other;
    }
}

/* The sizes that one expression leaves; parts that speak of other things leave all. */
NumberSet sizesLeft(Emitter &e, const TreeState &ts, const Constraint &constraint,
                    const ConstraintUse &use, NumberSet sizes) {
    if (sortOf(constraint) == Sort::Sizes)
        return evaluate({e.c, use.scope, use.type, Aspect::Sizes, viewOf(ts), false}, constraint,
                        sizes)
            .set;
    if (constraint.kind == ConstraintKind::Intersection)
        for (const Constraint *operand : constraint.operands)
            sizes = sizesLeft(e, ts, *operand, use, std::move(sizes));
    return sizes;
}

} // namespace

NumberSet constrainedSizes(Emitter &e, const TreeState &ts, TypeUse type) {
    NumberSet sizes = NumberSet::of(Number::of(0), Number::greatest());
    for (const ConstraintUse &use : constraintsOf(e.c, type).all)
        if (use.spec->root != nullptr && !isDropped(ts, *use.spec))
            sizes = sizesLeft(e, ts, *use.spec->root, use, std::move(sizes));
    const TypeUse base = baseOf(e.c, type);
    if (base && base.type->kind == TypeKind::BitString && !base.type->items.empty() &&
        !sizes.empty())
        return NumberSet::of(Number::of(0), sizes.upper()); /* zeros at the end may be missing */
    return sizes;
}

namespace {

/* An expression with what it needs to be read. */
struct Piece {
    const Constraint *expression = nullptr;
    const ConstraintSpec *spec = nullptr; /* whose root it is; null for a part of one */
    const Scope *scope = nullptr;
    bool own = false;
};

/* The constraint of a node on its way into the tree. */
struct Gathering {
    Emitter &e;
    TreeState &ts;
    const Pending &pending;
    TypeUse base;
    int baseKind = TYP_NONE;
    bool isReplaced = false; /* as octets: values and sizes of the type mean others */
    std::vector<Piece> pieces[3]; /* by Sort, own ones first */
    bool ownValues = false;
    bool ownSizes = false;
    bool worksOut[2] = {false, false}; /* Values and Sizes: as the set that all pieces leave */

    void add(const Piece &piece);
};

bool isNumberKind(int kind) {
    return kind == TYP_INTEGER || kind == TYP_REAL || kind == TYP_ENUM;
}

bool speaksOfContent(const Constraint &constraint) {
    return constraint.kind != ConstraintKind::UserDefined &&
           constraint.kind != ConstraintKind::Contents && constraint.kind != ConstraintKind::Table;
}

/* The generator takes no endpoints from EXCEPT, and wrong ones from what stands around it. */
bool excludes(const Constraint &constraint) {
    if (constraint.kind == ConstraintKind::Except || constraint.kind == ConstraintKind::AllExcept)
        return true;
    if (constraint.kind == ConstraintKind::Size)
        return constraint.inner != nullptr && constraint.inner->root != nullptr &&
               excludes(*constraint.inner->root);
    return std::any_of(constraint.operands.begin(), constraint.operands.end(),
                       [](const Constraint *operand) { return excludes(*operand); });
}

/* The functions of lists check what stands on the list itself; what references to it say besides is
   checked where a node says it. */
bool isLostInLists(const Gathering &g, const ConstraintUse &use) {
    return isListKind(g.baseKind) && use.type.type->element == nullptr;
}

void Gathering::add(const Piece &piece) {
    if (isReplaced && speaksOfContent(*piece.expression)) {
        if (piece.own)
            addNote(e, ts, "a constraint is left out: the type is held as octets");
        return;
    }
    Sort sort = sortOf(*piece.expression);
    if (sort == Sort::Values && !isNumberKind(baseKind))
        sort = Sort::Other;
    if (sort == Sort::Sizes && !hasSizeKind(baseKind))
        sort = Sort::Other;
    /* SIZE (1) ^ FROM ("a") is the same as one behind the other. */
    if (sort == Sort::Other && piece.expression->kind == ConstraintKind::Intersection &&
        hasSizeKind(baseKind)) {
        for (const Constraint *operand : piece.expression->operands)
            add({operand, nullptr, piece.scope, piece.own});
        return;
    }
    if (sort == Sort::Other && !piece.own)
        return; /* is checked where it stands */
    ownValues = ownValues || (piece.own && sort == Sort::Values);
    ownSizes = ownSizes || (piece.own && sort == Sort::Sizes);
    if (sort != Sort::Other && excludes(*piece.expression))
        worksOut[static_cast<int>(sort)] = true;
    pieces[static_cast<int>(sort)].push_back(piece);
}

/* What all layers of the node say, and behind it what it refers to. */
void gather(Gathering &g, const Layers &layers) {
    const ConstraintChain chain = constraintsOf(g.e.c, g.pending.use);
    std::size_t inherited = 0;
    if (layers.target.assignment != nullptr) {
        const ConstraintChain last = constraintsOf(g.e.c, layers.last());
        inherited = last.all.size() - last.own;
    }
    const std::size_t own = chain.all.size() - std::min(inherited, chain.all.size());
    for (std::size_t i = 0; i < chain.all.size(); ++i) {
        const ConstraintUse &use = chain.all[i];
        if (use.spec->root == nullptr)
            continue;
        if (isDropped(g.ts, *use.spec)) {
            if (i < own)
                addNote(g.e, g.ts,
                        "an extensible constraint is left out, since a later version may send more");
            continue;
        }
        if (i < own && g.ts.settings.extConstraints == ExtConstraints::Mark &&
            isExtensible(*use.spec))
            g.ts.tree().t(g.pending.nr).typeFlags |= TYPE_EXTENSIBLE;
        g.add({use.spec->root, use.spec, use.scope, i < own || isLostInLists(g, use)});
    }
    /* Each of a long chain of types would repeat what all in front of it say. */
    constexpr std::size_t MOST_REPEATED = 16;
    for (const Sort sort : {Sort::Values, Sort::Sizes})
        if (g.pieces[static_cast<int>(sort)].size() > MOST_REPEATED)
            g.worksOut[static_cast<int>(sort)] = true;
}

ExpressionContext contextOf(Gathering &g, ExpressionContext::Mode mode) {
    return {mode, placeOfNode(g.ts, g.pending.nr), g.pending.use, g.pending.frame};
}

RecNr emitPiece(Gathering &g, const Piece &piece, ExpressionContext::Mode mode) {
    const ExpressionContext context = contextOf(g, mode);
    return piece.spec != nullptr ? emitSpec(g.e, g.ts, *piece.spec, piece.scope, context)
                                 : emitExpression(g.e, g.ts, *piece.expression, piece.scope, context);
}

RecNr emitIntersection(TreeState &ts, const std::vector<RecNr> &parts) {
    return parts.size() > 1 ? operatorSub(ts, SUB_INTERSECTION, parts)
                            : parts.empty() ? 0 : parts.front();
}

/* A set of numbers or, with the integer that governs sizes, of sizes; 0 if it is empty or beyond what
   a tree can hold. A union stands within its ends, lest it extend what the node inherits. */
RecNr emitNumbers(Gathering &g, const NumberSet &numbers, RecNr sizeGovernor) {
    const RecNr governor = sizeGovernor != 0 ? sizeGovernor : g.pending.nr;
    std::vector<RecNr> parts;
    for (const NumberRange &range : numbers.ranges) {
        SubRec node;
        node.subKind = SUB_RANGE;
        node.subFlags = SUB_LOWER_CLOSED | SUB_UPPER_CLOSED;
        node.compTNode = sizeGovernor;
        node.compModule = sizeGovernor != 0 ? 1 : 0;
        for (const auto &[number, end] : {std::pair(&range.lower, &node.first),
                                          std::pair(&range.upper, &node.second)}) {
            if (!number->finite())
                continue;
            const std::optional<std::int64_t> value = asInt64(*number);
            if (!value)
                return 0;
            *end = integerValue(g.ts, *value, governor, VCS_DEFINITION);
        }
        parts.push_back(g.ts.tree().addSub(node));
    }
    if (parts.size() < 2)
        return parts.empty() ? 0 : parts.front();
    const RecNr all = emitNumbers(g, NumberSet::of(numbers.lower(), numbers.upper()), sizeGovernor);
    return operatorSub(g.ts, SUB_INTERSECTION, {operatorSub(g.ts, SUB_UNION, parts), all});
}

RecNr emitValuePart(Gathering &g) {
    if (!g.ownValues)
        return 0;
    if (g.baseKind == TYP_INTEGER && g.worksOut[static_cast<int>(Sort::Values)])
        if (const RecNr set = emitNumbers(g, valuesOf(g.e.c, g.pending.use, viewOf(g.ts)), 0); set != 0)
            return set;
    std::vector<RecNr> parts;
    for (const Piece &piece : g.pieces[static_cast<int>(Sort::Values)])
        if (const RecNr part = emitPiece(g, piece, ExpressionContext::Values); part != 0)
            parts.push_back(part);
    return emitIntersection(g.ts, parts);
}

/* The inside of SIZE; unions of sizes become sizes of unions. */
RecNr emitSizes(Gathering &g, const Constraint &constraint, const Scope *scope) {
    const ExpressionContext context = contextOf(g, ExpressionContext::Sizes);
    if (constraint.kind == ConstraintKind::Size)
        return emitSpec(g.e, g.ts, *constraint.inner, scope, context);
    std::vector<RecNr> parts;
    for (const Constraint *operand : constraint.operands) {
        const RecNr part = emitSizes(g, *operand, scope);
        if (part == 0)
            return 0;
        parts.push_back(part);
    }
    switch (constraint.kind) {
    case ConstraintKind::Union:
        return operatorSub(g.ts, SUB_UNION, parts);
    case ConstraintKind::Intersection:
        return operatorSub(g.ts, SUB_INTERSECTION, parts);
    case ConstraintKind::Except:
        return operatorSub(g.ts, SUB_EXCEPT, parts);
    default:
        return operatorSub(g.ts, SUB_ALL_EXCEPT, parts);
    }
}

/* Zeros at the end of named bits needn't be sent, so no value is too short. */
RecNr emitNamedBitSizes(Gathering &g) {
    const NumberSet sizes = constrainedSizes(g.e, g.ts, g.pending.use);
    if (sizes.empty() || !sizes.upper().finite())
        return 0;
    addNote(g.e, g.ts,
            "the lower bound of the size is 0, since named bits may be sent without zeros at the end");
    return emitNumbers(g, NumberSet::of(Number::of(0), sizes.upper()), plainInteger(g.ts));
}

RecNr emitSizePart(Gathering &g) {
    if (!g.ownSizes)
        return 0;
    RecNr inner = 0;
    if (g.baseKind == TYP_BITSTR && !g.base.type->items.empty()) {
        inner = emitNamedBitSizes(g);
    } else if (g.worksOut[static_cast<int>(Sort::Sizes)]) {
        inner = emitNumbers(g, constrainedSizes(g.e, g.ts, g.pending.use), plainInteger(g.ts));
    } else {
        std::vector<RecNr> parts;
        for (const Piece &piece : g.pieces[static_cast<int>(Sort::Sizes)])
            if (const RecNr part = emitSizes(g, *piece.expression, piece.scope); part != 0)
                parts.push_back(part);
        inner = emitIntersection(g.ts, parts);
    }
    return inner == 0 ? 0 : operatorSub(g.ts, SUB_SIZE, {inner});
}

} // namespace

void emitConstraints(Emitter &e, TreeState &ts, const Pending &pending, const Layers &layers) {
    Gathering g{e, ts, pending, baseOf(e.c, pending.use), TYP_NONE, false, {}, false, false};
    const bool isOpen = !g.base || g.base.type->kind == TypeKind::Field;
    if (g.base && !isOpen)
        g.baseKind = mainTypeOf(e, g.base);
    g.isReplaced = !isOpen && replacedTag(e, g.base) != 0;
    gather(g, layers);
    std::vector<RecNr> parts;
    const auto add = [&](RecNr part) {
        if (part != 0)
            parts.push_back(part);
    };
    add(emitValuePart(g));
    add(emitSizePart(g));
    for (const Piece &piece : g.pieces[static_cast<int>(Sort::Other)])
        add(emitPiece(g, piece, ExpressionContext::Values));
    if (!parts.empty()) {
        const RecNr root =
            parts.size() == 1 ? parts.front() : operatorSub(ts, SUB_CATENATION, parts);
        ts.tree().t(pending.nr).constraintRec = root;
    }
}

/* The constraints that a set's governor brings with it, but for those on its own node. */
std::vector<RecNr> emitInheritedValues(Emitter &e, TreeState &ts, RecNr nr, TypeUse governor) {
    const Pending pending{nr, governor, nullptr, nullptr, {}, {}};
    Gathering g{e, ts, pending, baseOf(e.c, governor), TYP_NONE, false, {}, true, false};
    std::vector<RecNr> parts;
    if (!g.base || g.base.type->kind == TypeKind::Field)
        return parts;
    g.baseKind = mainTypeOf(e, g.base);
    const ConstraintChain chain = constraintsOf(e.c, governor);
    for (std::size_t i = chain.own; i < chain.all.size(); ++i)
        if (chain.all[i].spec->root != nullptr && !isDropped(ts, *chain.all[i].spec))
            g.add({chain.all[i].spec->root, chain.all[i].spec, chain.all[i].scope, false});
    for (const Piece &piece : g.pieces[static_cast<int>(Sort::Values)])
        if (const RecNr part = emitPiece(g, piece, ExpressionContext::Values); part != 0)
            parts.push_back(part);
    return parts;
}

/* --- endpoints --- */

namespace {

struct Ends {
    std::int64_t low = INT64_MIN;
    std::int64_t high = INT64_MAX;
};

Ends common(Ends a, Ends b) {
    return {std::max(a.low, b.low), std::min(a.high, b.high)};
}

/* The number that a value leads to. */
std::optional<std::int64_t> numberOf(Emitter &e, TreeState *ts, RecNr nr) {
    for (int steps = 0; ts != nullptr && nr > 0 && steps < 1000; ++steps) {
        const VNode &value = ts->tree().v(nr);
        if (value.valueKind == TYP_INTEGER)
            return static_cast<std::int64_t>(valueBytes(value, 0, 8));
        if (value.valueKind != TYP_SYNONYM)
            return std::nullopt;
        nr = value.refRecord;
        ts = treeOfModule(e, *ts, value.refModule);
    }
    return std::nullopt;
}

struct EndpointWalk {
    Emitter &e;
    TreeState &ts;
    bool ofSize;
    Ends all;

    std::optional<Ends> ends(RecNr nr, bool inSize) const;
    std::optional<Ends> operands(const SubRec &node, bool inSize) const;
    std::optional<Ends> range(const SubRec &node) const;
};

std::optional<Ends> EndpointWalk::range(const SubRec &node) const {
    Ends ends = all;
    if (node.first != 0) {
        const std::optional<std::int64_t> low = numberOf(e, &ts, node.first);
        if (!low)
            return std::nullopt;
        ends.low = (node.subFlags & SUB_LOWER_CLOSED) != 0 || *low == INT64_MAX ? *low : *low + 1;
    }
    if (node.second != 0) {
        const std::optional<std::int64_t> high = numberOf(e, &ts, node.second);
        if (!high)
            return std::nullopt;
        ends.high = (node.subFlags & SUB_UPPER_CLOSED) != 0 || *high == INT64_MIN ? *high : *high - 1;
    }
    return ends;
}

/* A union widens, the others narrow; parts that say nothing are passed over. */
std::optional<Ends> EndpointWalk::operands(const SubRec &node, bool inSize) const {
    const bool widens = node.subKind == SUB_UNION;
    std::optional<Ends> sum;
    for (RecNr nr = node.first; nr != 0; nr = ts.tree().sub(nr).next) {
        const std::optional<Ends> part = ends(nr, inSize);
        if (!part)
            continue;
        if (!sum)
            sum = part;
        else if (widens)
            sum = Ends{std::min(sum->low, part->low), std::max(sum->high, part->high)};
        else
            sum = common(*sum, *part);
    }
    return sum;
}

std::optional<Ends> EndpointWalk::ends(RecNr nr, bool inSize) const {
    const SubRec node = ts.tree().sub(nr);
    const bool counts = inSize == ofSize;
    switch (node.subKind) {
    case SUB_UNION:
    case SUB_INTERSECTION:
    case SUB_CATENATION:
        return operands(node, inSize);
    case SUB_SIZE:
        return ofSize && node.first != 0 ? ends(node.first, true) : std::nullopt;
    case SUB_RANGE:
        return counts ? range(node) : std::nullopt;
    case SUB_SINGLE_VALUE: {
        const std::optional<std::int64_t> number =
            counts ? numberOf(e, &ts, node.first) : std::nullopt;
        return number ? std::optional<Ends>({*number, *number}) : std::nullopt;
    }
    case SUB_INCLUDES:
        if (auto known = ts.includedBounds.find(nr); counts && known != ts.includedBounds.end())
            return Ends{known->second.first, known->second.second};
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

Ends endsOfItems(TreeState &ts, RecNr nr) {
    Ends ends{INT64_MAX, INT64_MIN};
    for (RecNr item = ts.tree().t(nr).namedNumbersRec; item != 0; item = ts.tree().v(item).next) {
        if (ts.tree().v(item).valueKind != TYP_INTEGER)
            continue;
        const auto value = static_cast<std::int64_t>(valueBytes(ts.tree().v(item), 0, 8));
        ends = {std::min(ends.low, value), std::max(ends.high, value)};
    }
    return ends.low > ends.high ? Ends{} : ends;
}

} // namespace

namespace {

void setEndpointsOf(Emitter &e, TreeState &ts, RecNr nr) {
    const int kind = baseNode(e, {&ts, nr}).rec().mainType;
    Ends ends;
    if (ts.tree().t(nr).mainType == TYP_ENUM) {
        ends = endsOfItems(ts, nr);
    } else if (kind == TYP_INTEGER || hasSizeKind(kind)) {
        const bool ofSize = kind != TYP_INTEGER;
        if (ofSize)
            ends.low = 0;
        const RecNr root = ts.tree().t(nr).constraintRec;
        if (const EndpointWalk walk{e, ts, ofSize, ends}; root != 0)
            ends = walk.ends(root, false).value_or(ends);
    }
    ts.tree().t(nr).lowerEndpoint = storedNumber(ends.low);
    ts.tree().t(nr).upperEndpoint = storedNumber(ends.high);
}

} // namespace

void setEndpoints(Emitter &e, TreeState &ts) {
    for (std::size_t i = 0; i < ts.tree().tNodes.size(); ++i)
        if (ts.tree().tNodes[i].mainType < TYP_SELECTION)
            setEndpointsOf(e, ts, static_cast<RecNr>(i + 1));
}

} // namespace asntree
