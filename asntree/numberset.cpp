#include "asntree/numberset.h"

#include <algorithm>

namespace asntree {

NumberSet NumberSet::of(Number lower, Number upper) {
    if (upper < lower)
        return {};
    return {{{std::move(lower), std::move(upper)}}};
}

NumberSet NumberSet::ofRanges(std::vector<NumberRange> ranges) {
    std::sort(ranges.begin(), ranges.end(),
              [](const NumberRange &a, const NumberRange &b) { return a.lower < b.lower; });
    NumberSet result;
    for (NumberRange &range : ranges) {
        if (range.upper < range.lower)
            continue;
        if (result.ranges.empty() || next(result.ranges.back().upper) < range.lower)
            result.ranges.push_back(std::move(range));
        else if (result.ranges.back().upper < range.upper)
            result.ranges.back().upper = std::move(range.upper);
    }
    return result;
}

NumberSet intersected(const NumberSet &a, const NumberSet &b) {
    NumberSet result;
    for (std::size_t i = 0, j = 0; i < a.ranges.size() && j < b.ranges.size();) {
        const NumberRange &x = a.ranges[i];
        const NumberRange &y = b.ranges[j];
        const Number &lower = x.lower < y.lower ? y.lower : x.lower;
        const Number &upper = x.upper < y.upper ? x.upper : y.upper;
        if (lower <= upper)
            result.ranges.push_back({lower, upper});
        if (x.upper < y.upper)
            ++i;
        else
            ++j;
    }
    return result;
}

NumberSet without(const NumberSet &a, const NumberSet &b) {
    /* The gaps of b, then what a has in them. */
    NumberSet gaps;
    Number lower = Number::least();
    bool open = true; /* something is left above */
    for (const NumberRange &range : b.ranges) {
        if (lower < range.lower)
            gaps.ranges.push_back({lower, previous(range.lower)});
        lower = next(range.upper);
        open = range.upper.finite();
    }
    if (open)
        gaps.ranges.push_back({lower, Number::greatest()});
    return intersected(a, gaps);
}

namespace {

/* The range that holds `number`, null if there is none. */
const NumberRange *rangeOf(const NumberSet &set, const Number &number) {
    auto behind =
        std::upper_bound(set.ranges.begin(), set.ranges.end(), number,
                         [](const Number &n, const NumberRange &range) { return n < range.lower; });
    if (behind == set.ranges.begin() || (behind - 1)->upper < number)
        return nullptr;
    return &*(behind - 1);
}

} // namespace

bool contains(const NumberSet &set, const Number &number) {
    return rangeOf(set, number) != nullptr;
}

bool isWithin(const NumberSet &inner, const NumberSet &outer) {
    return std::all_of(inner.ranges.begin(), inner.ranges.end(), [&](const NumberRange &range) {
        const NumberRange *around = rangeOf(outer, range.lower);
        return around != nullptr && range.upper <= around->upper;
    });
}

std::string textOf(const NumberSet &set) {
    constexpr std::size_t MOST = 8; /* ranges that a message shows */
    std::string text;
    for (std::size_t i = 0; i < set.ranges.size(); ++i) {
        if (i == MOST)
            return text + " | ...";
        const NumberRange &range = set.ranges[i];
        text += (i == 0 ? "" : " | ") + textOf(range.lower);
        if (range.lower < range.upper)
            text += ".." + textOf(range.upper);
    }
    return text;
}

} // namespace asntree
