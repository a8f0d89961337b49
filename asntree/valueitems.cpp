#include "asntree/reading.h"

/* Items of ENUMERATED, INTEGER and BIT STRING with their numbers. */

namespace asntree {

namespace {

/* The smallest number from `least` on that `taken` leaves. Questions ascend, so that ranges below,
   which `at` counts, are passed once. */
Number smallestLeft(const NumberSet &taken, std::size_t &at, Number least) {
    for (; at < taken.ranges.size() && taken.ranges[at].lower <= least; ++at)
        if (least <= taken.ranges[at].upper)
            least = next(taken.ranges[at].upper);
    return least;
}

/* Numbers of the items that have one written; nothing where none is, or where it was refused. */
std::vector<std::optional<Number>> writtenNumbers(Compilation &c, TypeUse base) {
    std::vector<std::optional<Number>> numbers;
    for (const NamedItem &item : base.type->items)
        numbers.push_back(item.number == nullptr ? std::nullopt
                                                 : integerOf(c, {item.number, base.scope}));
    return numbers;
}

NumberSet setOfNumbers(const std::vector<SettledItem> &items) {
    std::vector<NumberRange> ranges;
    for (const SettledItem &item : items)
        ranges.push_back({item.number, item.number});
    return NumberSet::ofRanges(std::move(ranges));
}

void settleRoot(const std::vector<NamedItem> &items, std::size_t end,
                const std::vector<std::optional<Number>> &written, std::vector<SettledItem> &out) {
    std::vector<NumberRange> ranges;
    for (std::size_t i = 0; i < end; ++i)
        if (written[i])
            ranges.push_back({*written[i], *written[i]});
    const NumberSet taken = NumberSet::ofRanges(std::move(ranges));
    std::size_t at = 0;
    Number least;
    for (std::size_t i = 0; i < end; ++i) {
        if (items[i].number != nullptr) {
            out.push_back({&items[i], written[i].value_or(Number{})});
            continue;
        }
        out.push_back({&items[i], smallestLeft(taken, at, least)});
        least = next(out.back().number);
    }
}

/* An addition without a number gets the smallest that the root leaves above earlier additions. */
void settleAdditions(const std::vector<NamedItem> &items, std::size_t begin,
                     const std::vector<std::optional<Number>> &written,
                     std::vector<SettledItem> &out) {
    const NumberSet root = setOfNumbers(out);
    std::size_t at = 0;
    Number least;
    for (std::size_t i = begin; i < items.size(); ++i) {
        if (items[i].marker)
            continue;
        const Number number = written[i] ? *written[i] : smallestLeft(root, at, least);
        out.push_back({&items[i], number, true});
        if (least <= number)
            least = next(number);
    }
}

std::size_t markerOf(const std::vector<NamedItem> &items) {
    std::size_t at = 0;
    while (at < items.size() && !items[at].marker)
        ++at;
    return at;
}

/* False if the number of an item was refused. */
bool isSound(Compilation &c, TypeUse base, const NamedItem &item) {
    return item.number == nullptr || integerOf(c, {item.number, base.scope}).has_value();
}

ItemTable &itemTable(Compilation &c, TypeUse base) {
    const auto [entry, isNew] = memosOf(c).items.try_emplace({base.type, base.scope});
    ItemTable &table = entry->second;
    if (!isNew)
        return table;
    const std::vector<NamedItem> &items = base.type->items;
    const auto written = writtenNumbers(c, base);
    std::vector<SettledItem> settled;
    if (base.type->kind == TypeKind::Enumerated) {
        const std::size_t marker = markerOf(items);
        settleRoot(items, marker, written, settled);
        settleAdditions(items, marker, written, settled);
    } else {
        for (std::size_t i = 0; i < items.size(); ++i)
            if (!items[i].marker)
                settled.push_back({&items[i], written[i].value_or(Number{})});
    }
    table.items = std::move(settled);
    for (std::size_t i = 0; i < table.items.size(); ++i) {
        table.byName.try_emplace(table.items[i].item->name.text, i);
        if (isSound(c, base, *table.items[i].item))
            table.byNumber.try_emplace(textOf(table.items[i].number), i);
    }
    return table;
}

std::string nounOf(TypeKind kind) {
    return kind == TypeKind::Enumerated ? "item" : kind == TypeKind::Integer ? "number" : "bit";
}

void checkTwice(Compilation &c, TypeUse type, const ItemTable &table) {
    for (std::size_t i = 0; i < table.items.size(); ++i) {
        const NamedItem &item = *table.items[i].item;
        const std::size_t first = table.byName.at(item.name.text);
        const std::string noun = nounOf(type.type->kind);
        if (first != i) {
            error(c.diagnostics, item.name.place,
                  "the " + noun + " " + quote(item.name.text) + " is given twice",
                  {{table.items[first].item->name.place, "first given here"}});
            continue;
        }
        if (!isSound(c, type, item))
            continue;
        const std::string number = textOf(table.items[i].number);
        const std::size_t same = table.byNumber.at(number);
        if (same != i)
            error(c.diagnostics, item.name.place,
                  quote(item.name.text) + " has the number " + number + " that " +
                      quote(table.items[same].item->name.text) +
                      " has already; numbers must be distinct",
                  {{table.items[same].item->name.place, "first given here"}});
    }
}

/* Additions stand in the order of their numbers. */
void checkAdditions(Compilation &c, const ItemTable &table) {
    const SettledItem *before = nullptr;
    for (const SettledItem &item : table.items) {
        if (!item.addition)
            continue;
        if (before != nullptr && item.number < before->number)
            error(c.diagnostics, item.item->name.place,
                  "the number " + textOf(item.number) + " of " + quote(item.item->name.text) +
                      " is less than that of " + quote(before->item->name.text) +
                      " in front of it; behind the marker numbers must ascend",
                  {{before->item->name.place, "the item in front"}});
        before = &item;
    }
}

} // namespace

const std::vector<SettledItem> &itemsOf(Compilation &c, TypeUse base) {
    return itemTable(c, base).items;
}

const SettledItem *findItem(Compilation &c, TypeUse base, std::string_view name) {
    if (base.type->items.empty())
        return nullptr;
    const ItemTable &table = itemTable(c, base);
    const auto found = table.byName.find(name);
    return found == table.byName.end() ? nullptr : &table.items[found->second];
}

void checkItems(Compilation &c, TypeUse type) {
    const TypeKind kind = type.type->kind;
    if (kind != TypeKind::Enumerated && kind != TypeKind::Integer && kind != TypeKind::BitString)
        return;
    const ItemTable &table = itemTable(c, type);
    checkTwice(c, type, table);
    if (kind == TypeKind::Enumerated)
        checkAdditions(c, table);
    if (kind != TypeKind::BitString)
        return;
    for (const SettledItem &item : table.items)
        if (item.number < Number{})
            error(c.diagnostics, item.item->name.place,
                  "the bit " + quote(item.item->name.text) + " has the number " +
                      textOf(item.number) + "; bits count from 0");
}

} // namespace asntree
