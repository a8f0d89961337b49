#include "model/valuetexts.h"

#include <algorithm>
#include <cctype>
#include <span>

#include "base/fatal.h"
#include "model/valuewalk.h"
#include "store/classify.h"
#include "store/ketramac.h"
#include "store/strings.h"
#include "store/values.h"

namespace {

using StringCall = Call<void(AsnValue *value, std::int32_t length, const char *text)>;

/* --- bit and octet strings --- */

/* A named bit beyond this is a fault of the tree: a value has a digit for each bit below it. */
constexpr std::int32_t MAX_NAMED_BIT = 100'000;
constexpr char hexDigits[] = "0123456789ABCDEF";

bool isDigitString(const AsnValue &value) {
    return value.base.valueKind == TYP_BITSTR || value.base.valueKind == TYP_OCTSTR;
}

/* The number of the bit that the current VNode, an element of a list of named bits, sets. */
std::int32_t namedBitNumber() {
    skipValues(true);
    if (vNode.valueKind != TYP_INTEGER)
        fatalError(FATAL_INTERNAL, nullptr);
    std::int32_t number = 0;
    if (!i64tol(valueInt(vNode), &number) || number < 0 || number > MAX_NAMED_BIT)
        fatalError(FATAL_INTERNAL, "Too long named bit value");
    return number;
}

/* The digits that a list of named bits stands for, up to the last bit that is set. */
Text namedBitDigits(const AsnValue &value) {
    Text digits;
    ChainGuard guard(REC_VNODE);
    for (RecNr nr = value.base.refRecord; nr != 0;) {
        guard.step(value.baseModule);
        readRec(value.baseModule, REC_VNODE, nr);
        nr = vNode.next;
        const auto bit = static_cast<std::size_t>(namedBitNumber());
        if (bit >= digits.size())
            digits.resize(bit + 1, '0');
        digits[bit] = '1';
    }
    return digits;
}

std::size_t hexDigitValue(char digit) {
    const char *place = std::find(hexDigits, hexDigits + 16, digit);
    return place == hexDigits + 16 ? 0 : static_cast<std::size_t>(place - hexDigits);
}

Text hexToBinary(const Text &hex) {
    Text digits;
    for (char digit : hex) {
        const std::size_t number = hexDigitValue(digit);
        for (int bit = 3; bit >= 0; --bit)
            digits += (number >> bit & 1) != 0 ? '1' : '0';
    }
    return digits;
}

/* Whole octets, the last one filled up with zero bits. */
Text binaryToHex(Text digits) {
    digits.resize((digits.size() + 7) / 8 * 8, '0');
    Text hex;
    for (std::size_t i = 0; i < digits.size(); i += 4) {
        std::size_t number = 0;
        for (std::size_t bit = 0; bit < 4; ++bit)
            number = number << 1 | (digits[i + bit] == '1' ? 1 : 0);
        hex += hexDigits[number];
    }
    return hex;
}

void forDigits(AsnValue *value, StringCall func,
               bool (*make)(AsnValue *value, Text *text, std::int32_t *length)) {
    requireCall(func);
    Text text;
    std::int32_t length = 0;
    if (make(value, &text, &length))
        func(value, length, text.c_str());
}

/* --- object identifiers --- */

/* The named arcs below one arc; an arc's place in the table is its number. */
struct ArcTable;
struct ArcRow {
    const char *name;
    const ArcTable *table; /* null: no names below */
};
struct ArcTable {
    std::span<const ArcRow> rows;
};

constexpr ArcRow recommendationRows[] = {
    {nullptr, nullptr}, {"a", nullptr}, {"b", nullptr}, {"c", nullptr}, {"d", nullptr},
    {"e", nullptr},     {"f", nullptr}, {"g", nullptr}, {"h", nullptr}, {"i", nullptr},
    {"j", nullptr},     {"k", nullptr}, {"l", nullptr}, {"m", nullptr}, {"n", nullptr},
    {"o", nullptr},     {"p", nullptr}, {"q", nullptr}, {"r", nullptr}, {"s", nullptr},
    {"t", nullptr},     {"u", nullptr}, {"v", nullptr}, {"w", nullptr}, {"x", nullptr},
    {"y", nullptr},     {"z", nullptr},
};
constexpr ArcTable recommendationNode = {recommendationRows};
constexpr ArcRow ccittRows[] = {
    {"recommendation", &recommendationNode},
    {"question", nullptr},
    {"administration", nullptr},
    {"network-operator", nullptr},
};
constexpr ArcTable ccittNode = {ccittRows};
constexpr ArcRow isoRows[] = {
    {"standard", nullptr},
    {"registration-authority", nullptr},
    {"member-body", nullptr},
    {"identified-organization", nullptr},
};
constexpr ArcTable isoNode = {isoRows};
constexpr ArcRow rootRows[] = {
    {"ccitt", &ccittNode},
    {"iso", &isoNode},
    {"joint-iso-ccitt", nullptr},
};
constexpr ArcTable rootNode = {rootRows};

/* The name of an arc in the table, which moves down to what stands below it; null, and no table any
   more, if it isn't there. */
const char *lookUpArc(const ArcTable **table, std::uint32_t number) {
    if (*table == nullptr || number >= (*table)->rows.size() ||
        (*table)->rows[number].name == nullptr) {
        *table = nullptr;
        return nullptr;
    }
    const ArcRow &row = (*table)->rows[number];
    *table = row.table;
    return row.name;
}

/* Stores the current VNode, which is an arc, with the name that its list gave it (or none). */
void addArc(ObjIdComps *comps, ModRec *module, RecNr name, const ArcTable **table) {
    std::uint32_t number = 0;
    if (!i64toul(valueInt(vNode), &number))
        fatalError(FATAL_INTERNAL, "Too large object identifier element value");
    comps->numbers.push_back(number);
    if (name == 0)
        comps->names.push_back(lookUpArc(table, number));
    else
        comps->names.push_back(vNode.nameIdx == 0 ? nullptr : getStri(module, name));
}

int objIdDepth = 0;

/* The arcs of the current VNode, counted, and stored unless `comps` is null; -1 if it can't be
   resolved. A reference in front stands for the arcs of another value. */
int objIdComps(ObjIdComps *comps, ChainGuard *guard) {
    ModRec *module = currModule(REC_VNODE);
    NestingGuard nesting(&objIdDepth, module, MAX_NESTING);
    const ArcTable *table = &rootNode;
    int count = 0;
    RecNr nr = vNode.refRecord;
    if (nr == 0)
        return -1;
    while (nr != 0) {
        guard->step(module);
        readRec(module, REC_VNODE, nr);
        nr = vNode.next;
        const RecNr name = vNode.nameIdx;
        skipValues(true);
        if (count == 0 && vNode.valueKind == TYP_OBJID) {
            count = objIdComps(comps, guard);
            if (count < 0)
                return -1;
            continue;
        }
        if (vNode.valueKind != TYP_INTEGER)
            return -1;
        if (comps != nullptr)
            addArc(comps, module, name, &table);
        ++count;
    }
    return count;
}

/* The arc at `index` as text: its number, its name, and what comes before the next one. */
Text arcText(const ObjIdComps &comps, std::size_t index, const char *separator,
             const char *namePrefix, const char *nameSuffix) {
    Text text = std::to_string(comps.numbers[index]);
    if (namePrefix != nullptr && nameSuffix != nullptr && comps.names[index] != nullptr)
        text = text + namePrefix + comps.names[index] + nameSuffix;
    if (index + 1 < comps.numbers.size())
        text += separator == nullptr ? " " : separator;
    return text;
}

/* --- times --- */

bool isTime(int kind) {
    return kind == TYP_GENTIME || kind == TYP_UTCTIME;
}

const char *timeText(const AsnValue &value) {
    const RecNr stri = valueStri(value.base);
    return stri == 0 ? "" : getStri(value.baseModule, stri);
}

/* An 8-bit character string or a time; false for other values. */
bool characterString(AsnValue *value, Text *text) {
    const int kind = value->base.valueKind;
    if (isTime(kind))
        *text = timeText(*value);
    else if (isText8Kind(kind))
        *text = makeRestrCharStri(value->baseModule, value->base).text8;
    else
        return false;
    return true;
}

} // namespace

Text getSafeString(AsnValue *value, std::int32_t *length) {
    const VNode &base = value->base;
    const RecNr stri = valueStri(base);
    Text text;
    if (base.valueKind == TYP_BITSTR && (base.refRecord != 0 || stri == 0)) {
        text = namedBitDigits(*value);
        *length = static_cast<std::int32_t>(text.size());
        return text;
    }
    if (stri != 0)
        text = getStri(value->baseModule, stri);
    *length = std::min<std::int32_t>(valueLength(base), static_cast<std::int32_t>(text.size()));
    return text;
}

bool makeBitString(AsnValue *value, Text *text, std::int32_t *length) {
    if (!isDigitString(*value))
        return false;
    *text = getSafeString(value, length);
    if (value->base.valueKind == TYP_OCTSTR) {
        *text = hexToBinary(*text);
        *length *= 4;
    }
    return true;
}

bool makeOctetString(AsnValue *value, Text *text, std::int32_t *length) {
    if (!isDigitString(*value))
        return false;
    *text = getSafeString(value, length);
    if (value->base.valueKind == TYP_OCTSTR) {
        if (text->size() % 2 != 0)
            *text += '0';
    } else {
        text->resize(static_cast<std::size_t>(*length));
        *length = (*length + 7) / 8;
        *text = binaryToHex(*text);
    }
    return true;
}

void forBitStringValueB(AsnValue *value, StringCall func) {
    forDigits(value, func, makeBitString);
}

void forBitStringValueX(AsnValue *value, StringCall func) {
    forDigits(value, func, makeOctetString);
}

void forOctetStringValue(AsnValue *value, StringCall func) {
    forDigits(value, func, makeOctetString);
}

void forCharacterStringValue(AsnValue *value, StringCall func) {
    requireCall(func);
    Text text;
    if (characterString(value, &text))
        func(value, static_cast<std::int32_t>(text.size()), text.c_str());
}

bool makeObjIdComps(AsnValue *value, ObjIdComps *comps) {
    *comps = ObjIdComps{};
    if (value->base.valueKind != TYP_OBJID)
        return false;
    /* The first pass tells whether all of it can be resolved. */
    ChainGuard counting(REC_VNODE);
    readRec(value->baseModule, REC_VNODE, value->baseRecord);
    if (objIdComps(nullptr, &counting) < 0)
        return false;
    ChainGuard filling(REC_VNODE);
    readRec(value->baseModule, REC_VNODE, value->baseRecord);
    objIdComps(comps, &filling);
    return true;
}

int getNrOfObjectIdentifierComps(AsnValue *value) {
    ObjIdComps comps;
    return makeObjIdComps(value, &comps) ? comps.count() : 0;
}

Text objectIdentifierValueStri(AsnValue *value, const char *separator, const char *namePrefix,
                               const char *nameSuffix) {
    ObjIdComps comps;
    if (!makeObjIdComps(value, &comps))
        return "";
    Text text;
    for (std::size_t i = 0; i < comps.numbers.size(); ++i)
        text += arcText(comps, i, separator, namePrefix, nameSuffix);
    return text;
}
