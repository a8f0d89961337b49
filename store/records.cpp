#include "store/records.h"

#include <algorithm>

#include "base/fatal.h"

namespace {

/* The records of one kind and the buffer of the current one. */
template <typename Rec> struct Store {
    std::vector<Rec> ModRec::*records;
    Rec *current;
};

/* Calls func(Store) for the kinds that have a current record; false for others. */
template <typename F> bool withStore(RecKind kind, F &&func) {
    switch (kind) {
    case REC_MNODE:
        func(Store<MNode>{&ModRec::mNodes, &mNode});
        return true;
    case REC_TNODE:
        func(Store<TNode>{&ModRec::tNodes, &tNode});
        return true;
    case REC_VNODE:
        func(Store<VNode>{&ModRec::vNodes, &vNode});
        return true;
    case REC_TAG:
        func(Store<TagRec>{&ModRec::tagRecs, &tagRec});
        return true;
    case REC_SUB:
        func(Store<SubRec>{&ModRec::subRecs, &subRec});
        return true;
    case REC_TED:
        func(Store<TedRec>{&ModRec::tedRecs, &tedRec});
        return true;
    case REC_SNODE:
        func(Store<SNode>{&ModRec::sNodes, &sNode});
        return true;
    default:
        return false;
    }
}

template <typename Rec>
Rec &storedRec(ModRec *module, std::vector<Rec> ModRec::*records, RecNr nr) {
    if (module == nullptr || nr < 1 || static_cast<std::size_t>(nr) > (module->*records).size())
        fatalError(FATAL_READ_RECORD, nullptr);
    return (module->*records)[static_cast<std::size_t>(nr) - 1];
}

/* Beyond this number nothing can be added. */
constexpr RecNr MAX_REC_NR = 2147483640;

/* A run reads each record some hundred times. Trees in which everything refers to everything, so
   that work grows with the square of their size, come to an end here. */
constexpr std::int64_t WORK_PER_RECORD = 10000;

std::int64_t recCountOfAll(RecKind kind) {
    std::int64_t count = 0;
    for (const auto &record : modRecList.records)
        count += recCount(record.get(), kind);
    return count;
}

void extendWork(const ModRec *module) {
    static bool extended = false;
    if (!extended)
        for (int kind = REC_MNODE; kind < REC_STRI8; ++kind)
            workLeft += WORK_PER_RECORD * recCountOfAll(static_cast<RecKind>(kind));
    extended = true;
    if (workLeft < 0)
        treeInconsistent(module);
}

} // namespace

/* Current records are copies: a reader may change one, and the stored record stays as it is
   until writeRec. */

void readRec(ModRec *module, RecKind kind, RecNr nr) {
    if (kind < 0 || kind >= REC_STRI8)
        fatalError(FATAL_READ_RECORD, nullptr);
    const NodePlace place{module, nr};
    if (module != nullptr && recJustRead[kind] == place)
        return;
    spendWork(module, 1);
    withStore(kind, [&](auto store) { *store.current = storedRec(module, store.records, nr); });
    recJustRead[kind] = place;
}

void writeRec(ModRec *module, RecKind kind, RecNr nr) {
    if (module == nullptr || nr < 1 || nr > MAX_REC_NR)
        fatalError(FATAL_WRITE_RECORD, nullptr);
    const bool written = withStore(kind, [&](auto store) {
        auto &records = module->*store.records;
        const auto place = static_cast<std::size_t>(nr) - 1;
        if (place > records.size())
            fatalError(FATAL_WRITE_RECORD, nullptr);
        if (place == records.size())
            records.push_back(*store.current);
        else
            records[place] = *store.current;
    });
    if (!written)
        fatalError(FATAL_WRITE_RECORD, nullptr);
    recJustRead[kind] = {module, nr};
}

/* What is asked too often for a copy is looked at where it stands. */

TNode &storedTNode(ModRec *module, RecNr nr) {
    return storedRec(module, &ModRec::tNodes, nr);
}
VNode &storedVNode(ModRec *module, RecNr nr) {
    return storedRec(module, &ModRec::vNodes, nr);
}
const MNode &storedMNode(ModRec *module, RecNr nr) {
    return storedRec(module, &ModRec::mNodes, nr);
}

void prefetchVNodes(const ModRec *module, RecNr nr) {
    constexpr RecNr AROUND = 8;
    const auto last = std::min(std::int64_t{nr} + AROUND, std::int64_t{recCount(module, REC_VNODE)});
    for (std::int64_t near = std::max(nr - AROUND, 1); near <= last; ++near)
        __builtin_prefetch(&module->vNodes[static_cast<std::size_t>(near) - 1]);
}

/* Module numbers are those of imports, in the module that has the record. */

ModRec *getModPtr(ModRec *module, std::int32_t moduleNr) {
    if (moduleNr == 1 || module == nullptr)
        return module;
    /* The imports of a tree stand in the order of their numbers, which begin at 2. */
    const auto &imports = module->imports.recs;
    const auto place = static_cast<std::size_t>(moduleNr - std::int64_t{2});
    if (moduleNr < 2 || place >= imports.size() || imports[place]->picNr != moduleNr)
        return nullptr;
    return imports[place]->picMod;
}

RecNr recCount(const ModRec *module, RecKind kind) {
    std::size_t count = 0;
    if (!withStore(kind, [&](auto store) { count = (module->*store.records).size(); })) {
        const std::size_t striCounts[] = {module->stri8.size(), module->stri16.size(),
                                          module->stri32.size()};
        count = striCounts[kind - REC_STRI8];
    }
    return static_cast<RecNr>(count);
}

/* The three guards: a list or chain that comes back to itself, nesting deeper than the stack,
   and parts that share parts until the paths are without number. */

void ChainGuard::extend(const ModRec *module) {
    if (extended_)
        treeInconsistent(module);
    extended_ = true;
    left_ = recCountOfAll(kind_) - FREE_STEPS - 1;
    if (left_ < 0)
        treeInconsistent(module);
}

int nestingLimit = MAX_NESTING;

NestingGuard::NestingGuard(int *depth, const ModRec *module, int limit) : depth_(depth) {
    if (++*depth_ > limit)
        treeInconsistent(module);
}

void spendWork(const ModRec *module, std::int64_t pieces) {
    if ((workLeft -= pieces) < 0)
        extendWork(module);
}

void treeInconsistent(const ModRec *module) {
    fatalError(FATAL_INCONSISTENT, module == nullptr ? nullptr : module->filePrefix.c_str());
}
