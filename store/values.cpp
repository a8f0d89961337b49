#include "store/values.h"

#include <algorithm>
#include <limits>

#include "store/classify.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

/* Places in the 12 bytes of a value. */
constexpr std::size_t AT_NUMBER = 0;
constexpr std::size_t AT_LENGTH = 0;
constexpr std::size_t AT_STRI = 4;
constexpr std::size_t AT_BASE = 8;
constexpr std::size_t AT_EXPONENT = 10;

std::uint32_t get(const VNode &node, std::size_t at, std::size_t width) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < width; ++i)
        number = number << 8 | node.value[at + i];
    return number;
}

void put(VNode *node, std::size_t at, std::size_t width, std::uint32_t number) {
    for (std::size_t i = width; i > 0; --i) {
        node->value[at + i - 1] = static_cast<std::uint8_t>(number);
        number >>= 8;
    }
}

constexpr std::int32_t NO_CODE = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t NO_LENGTH = std::numeric_limits<std::int32_t>::max();

} // namespace

/* A value has 12 bytes, whose meaning its kind decides: a number, a real, or the length and
   number of a string. */

sint64 valueInt(const VNode &node) {
    return i64make(static_cast<std::int32_t>(get(node, AT_NUMBER, 4)), get(node, AT_NUMBER + 4, 4));
}

void setValueInt(VNode *node, sint64 number) {
    put(node, AT_NUMBER, 4, static_cast<std::uint32_t>(i64hi(number)));
    put(node, AT_NUMBER + 4, 4, i64lo(number));
}

std::uint16_t valueLength(const VNode &node) {
    return static_cast<std::uint16_t>(get(node, AT_LENGTH, 2));
}

RecNr valueStri(const VNode &node) {
    return static_cast<RecNr>(get(node, AT_STRI, 4));
}

realVal valueReal(const VNode &node) {
    return {valueInt(node), static_cast<std::int16_t>(get(node, AT_BASE, 2)),
            static_cast<std::int16_t>(get(node, AT_EXPONENT, 2))};
}

void setValueReal(VNode *node, const realVal &value) {
    setValueInt(node, value.mantissa);
    put(node, AT_BASE, 2, static_cast<std::uint16_t>(value.base));
    put(node, AT_EXPONENT, 2, static_cast<std::uint16_t>(value.exponent));
}

realVal makeSpecialRealVal(std::int32_t code) {
    return {i64ltosint64(code), -1, 0};
}

bool isSpecialRealVal(const realVal &value) {
    return value.base == -1;
}

std::int32_t getSpecialRealVal(const realVal &value) {
    std::int32_t code = NO_CODE;
    i64tol(value.mantissa, &code);
    return code;
}

/* Reals are kept as they were written, and compared by what the machine makes of them. */

double retRealVal(const realVal &value) {
    if (isSpecialRealVal(value)) {
        const std::int32_t code = getSpecialRealVal(value);
        const double infinity = std::numeric_limits<double>::max();
        return code == REAL_PLUS_INFINITY    ? infinity
               : code == REAL_MINUS_INFINITY ? -infinity
                                             : 0.0;
    }
    /* The words are joined and the power is taken step by step: each step rounds, and the last
       digits that are printed come out of just this order. */
    double result = static_cast<double>(i64hi(value.mantissa)) * 65536 * 65536 +
                    static_cast<double>(i64lo(value.mantissa));
    for (int i = 0; i < value.exponent; ++i)
        result *= value.base;
    for (int i = 0; i > value.exponent; --i)
        result /= value.base;
    return result;
}

int compareReal(const realVal &a, const realVal &b) {
    const double left = retRealVal(a);
    const double right = retRealVal(b);
    return left < right ? -1 : left > right ? 1 : 0;
}

void setInfinity(VNode *node, bool plus, int kind) {
    if (kind == TYP_REAL)
        setValueReal(node, makeSpecialRealVal(plus ? REAL_PLUS_INFINITY : REAL_MINUS_INFINITY));
    else
        setValueInt(node, plus ? i64max() : i64min());
}

bool testInfinity(const VNode &node, bool plus, int kind) {
    if (kind == TYP_REAL) {
        const realVal value = valueReal(node);
        return isSpecialRealVal(value) &&
               getSpecialRealVal(value) == (plus ? REAL_PLUS_INFINITY : REAL_MINUS_INFINITY);
    }
    return plus ? i64ismax(valueInt(node)) : i64ismin(valueInt(node));
}

namespace {

/* Characters of one value. References let a small tree describe a text of any size, so more than this
   is a fault of the tree. */
constexpr std::int64_t MAX_TEXT = std::int64_t{1} << 22;
/* So many of them are as much work as a read. */
constexpr int CHARACTERS_PER_READ = 64;

/* A walk over the segments of one value. */
struct SegmentWalk {
    RestrCharStri *dst; /* null: only the length is asked for */
    std::int64_t length = 0;
    int depth = 0;
};

void addLength(SegmentWalk *walk, int length, const ModRec *module) {
    walk->length += length;
    spendWork(module, 1 + length / CHARACTERS_PER_READ);
    if (walk->length > MAX_TEXT)
        treeInconsistent(module);
}

char32_t unitOf(char c) {
    return static_cast<unsigned char>(c);
}
char32_t unitOf(char16_t c) {
    return c;
}
char32_t unitOf(char32_t c) {
    return c;
}

/* A segment of another width than its value is taken over character by character. */
template <typename C> void appendText(RestrCharStri *dst, const C *text, std::uint16_t length) {
    for (std::uint16_t i = 0; i < length && text[i] != C{}; ++i) {
        if (dst->kind == TYP_BMPSTR)
            dst->text16 += static_cast<char16_t>(unitOf(text[i]));
        else if (dst->kind == TYP_UNISTR)
            dst->text32 += unitOf(text[i]);
        else
            dst->text8 += static_cast<char>(unitOf(text[i]));
    }
}

void appendLeaf(ModRec *module, const VNode &node, RestrCharStri *dst) {
    const RecNr stri = valueStri(node);
    if (stri == 0)
        return;
    if (node.valueKind == TYP_BMPSTR)
        appendText(dst, getStri16(module, stri), valueLength(node));
    else if (node.valueKind == TYP_UNISTR)
        appendText(dst, getStri32(module, stri), valueLength(node));
    else
        appendText(dst, getStri(module, stri), valueLength(node));
}

std::int32_t walkSegments(ModRec *module, const VNode &node, SegmentWalk *walk) {
    NestingGuard nesting(&walk->depth, module);
    if (node.refRecord == 0) {
        addLength(walk, valueLength(node), module);
        if (walk->dst != nullptr)
            appendLeaf(module, node, walk->dst);
        return valueLength(node);
    }
    std::int32_t length = 0;
    for (RecNr nr = node.refRecord; nr != 0;) {
        addLength(walk, 0, module);
        readRec(module, REC_VNODE, nr);
        nr = vNode.next;
        skipValues(false);
        length += walkSegments(currModule(REC_VNODE), VNode(vNode), walk);
    }
    return length;
}

/* The text has as many characters as its parts claim, filled up with zeros. */
void settleLength(RestrCharStri *value, std::int32_t length) {
    const auto units = static_cast<std::size_t>(length);
    if (value->kind == TYP_BMPSTR)
        value->text16.resize(units);
    else if (value->kind == TYP_UNISTR)
        value->text32.resize(units);
    else
        value->text8.resize(units);
}

} // namespace

/* Strings may be written in segments, also by way of other values; their parts are put together
   here. */

std::int32_t RestrCharStri::length() const {
    const std::size_t units = kind == TYP_BMPSTR   ? text16.size()
                              : kind == TYP_UNISTR ? text32.size()
                                                   : text8.size();
    return static_cast<std::int32_t>(units);
}

std::int32_t makeRestrCharStriSeg(ModRec *module, const VNode &node, RestrCharStri *dst) {
    SegmentWalk walk{dst};
    return walkSegments(module, node, &walk);
}

RestrCharStri makeRestrCharStri(ModRec *module, const VNode &node) {
    RestrCharStri value;
    value.kind = node.valueKind;
    /* The walk moves the current record, and `node` may be that one. */
    const VNode copy = node;
    settleLength(&value, makeRestrCharStriSeg(module, copy, &value));
    return value;
}

std::int32_t lenFromNamedBits(ModRec *module, RecNr first) {
    std::int64_t length = 0;
    ChainGuard guard(REC_VNODE);
    for (RecNr nr = first; nr != 0;) {
        guard.step(module);
        readRec(module, REC_VNODE, nr);
        nr = vNode.next;
        skipValues(false);
        std::int32_t bit = NO_LENGTH;
        i64tol(valueInt(vNode), &bit);
        length = std::max(length, std::min<std::int64_t>(std::int64_t{bit} + 1, NO_LENGTH));
    }
    return static_cast<std::int32_t>(length);
}

namespace {

/* The digits of a bstring or hstring as bits; what its text lacks is 0. */
class Digits {
public:
    Digits(ModRec *module, const VNode &node) : hex_(node.valueKind == TYP_OCTSTR) {
        const RecNr stri = valueStri(node);
        text_ = stri == 0 ? std::string_view() : std::string_view(getStri(module, stri));
    }
    bool bit(std::int32_t n) const {
        const auto place = static_cast<std::size_t>(hex_ ? n / 4 : n);
        if (place >= text_.size())
            return false;
        const char digit = text_[place];
        if (!hex_)
            return digit == '1';
        const int value = digit <= '9' ? digit - '0' : digit - 'A' + 10;
        return (value >> (3 - n % 4) & 1) != 0;
    }

private:
    bool hex_;
    std::string_view text_;
};

/* The current records are the BIT STRING type and its value. */
std::int32_t bitStringLength() {
    const NodeContext keepValue(REC_VNODE);
    ModRec *module = currModule(REC_VNODE);
    const VNode value = vNode;
    if (value.valueKind == TYP_BITSTR && value.refRecord != 0)
        return lenFromNamedBits(module, value.refRecord);
    /* A named bit of the type is governed by it as well; it is a number and has no digits. */
    if (value.valueKind != TYP_BITSTR && value.valueKind != TYP_OCTSTR)
        return 0;
    std::int32_t limit = 0;
    if (tNode.namedNumbersRec != 0)
        limit = lenFromNamedBits(currModule(REC_TNODE), tNode.namedNumbersRec);
    std::int32_t length = valueLength(value) * (value.valueKind == TYP_OCTSTR ? 4 : 1);
    if (limit != 0) {
        /* With named bits, trailing zeros mean nothing. */
        const Digits digits(module, value);
        while (length > limit && !digits.bit(length - 1))
            --length;
    }
    return length;
}

} // namespace

std::int32_t getAnyStringLength() {
    if (tNode.mainType == TYP_BITSTR)
        return bitStringLength();
    if (tNode.mainType == TYP_OCTSTR) {
        const int digitsInOctet = vNode.valueKind == TYP_OCTSTR ? 2 : 8;
        return (valueLength(vNode) + digitsInOctet - 1) / digitsInOctet;
    }
    const NodeContext keepValue(REC_VNODE);
    skipValues(false);
    return makeRestrCharStriSeg(currModule(REC_VNODE), VNode(vNode), nullptr);
}
