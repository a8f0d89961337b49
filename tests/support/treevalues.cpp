#include "tests/support/treewriter.h"

#include <cassert>

/* Values, constraints, and what stands on classes: objects and sets. */

namespace {

std::size_t at(RecNr nr) {
    return static_cast<std::size_t>(nr - 1);
}

using asntree::putValueBytes;

/* Length and number of a string, as all kinds of strings have them. */
ValueNode stringValue(ValueNode value, std::size_t length, RecNr stri) {
    putValueBytes(value.rec(), 0, 2, length);
    putValueBytes(value.rec(), 4, 4, static_cast<std::uint64_t>(stri));
    return value;
}

} // namespace

VNode &ValueNode::rec() const {
    return tree->vNodes[at(nr)];
}

ValueNode ValueNode::named(std::string_view name) const {
    rec().nameIdx = tree->str(name);
    return *this;
}

ValueNode ValueNode::governedBy(TypeNode type) const {
    rec().governorRec = type.nr;
    rec().governorModule = 1;
    return *this;
}

ValueNode ValueNode::exported(bool is) const {
    int flags = is ? rec().valueFlags | VALUE_EXPORTED : rec().valueFlags & ~VALUE_EXPORTED;
    rec().valueFlags = static_cast<std::uint8_t>(flags);
    return *this;
}

ValueNode ValueNode::naming(std::string_view text) const {
    rec().valueFlags |= VALUE_NAMING;
    tree->valueNotes[at(nr)].options.push_back({TED_OPTION, tree->str(text)});
    return *this;
}

ValueNode ValueNode::line(int number) const {
    rec().lineNr = number;
    return *this;
}

/* --- definitions --- */

ValueNode TreeWriter::defineValue(std::string_view name, TypeNode governor, ValueNode value) {
    assert(value->next == 0 && value.nr != lastValueDefinition);
    if (governor->nameIdx == 0)
        anonymous(governor);
    value.named(name).governedBy(governor);
    value->compStatus = VCS_DEFINITION;
    if (header().exportsMode == 0)
        value.exported();
    RecNr &end =
        lastValueDefinition == 0 ? header().firstVNode : vNodes[at(lastValueDefinition)].next;
    end = value.nr;
    lastValueDefinition = value.nr;
    valueNames.emplace(name, value.nr);
    return value;
}

ValueNode TreeWriter::findValue(std::string_view name) const {
    auto found = valueNames.find(std::string(name));
    return {const_cast<TreeWriter *>(this), found == valueNames.end() ? 0 : found->second};
}

/* --- values --- */

ValueNode TreeWriter::value(MainType kind) {
    VNode node;
    node.valueKind = static_cast<std::uint8_t>(kind);
    node.compStatus = VCS_DEFINITION;
    return {this, addV(node)};
}

ValueNode TreeWriter::boolValue(bool is) {
    ValueNode node = value(TYP_BOOLEAN);
    putValueBytes(node.rec(), 0, 1, is ? 1 : 0);
    return node;
}

ValueNode TreeWriter::intValue(std::int64_t number) {
    ValueNode node = value(TYP_INTEGER);
    putValueBytes(node.rec(), 0, 8, static_cast<std::uint64_t>(number));
    return node;
}

ValueNode TreeWriter::realValue(std::int64_t mantissa, int base, int exponent) {
    ValueNode node = value(TYP_REAL);
    putValueBytes(node.rec(), 0, 8, static_cast<std::uint64_t>(mantissa));
    putValueBytes(node.rec(), 8, 2, static_cast<std::uint64_t>(base));
    putValueBytes(node.rec(), 10, 2, static_cast<std::uint64_t>(exponent));
    return node;
}

ValueNode TreeWriter::bitsValue(std::string_view digits) {
    return stringValue(value(TYP_BITSTR), digits.size(), str(digits));
}

ValueNode TreeWriter::hexValue(std::string_view digits) {
    return stringValue(value(TYP_OCTSTR), digits.size(), str(digits));
}

ValueNode TreeWriter::textValue(MainType kind, std::string_view text) {
    return stringValue(value(kind), text.size(), str(text));
}

ValueNode TreeWriter::text16Value(std::u16string_view text) {
    return stringValue(value(TYP_BMPSTR), text.size(), str16(text));
}

ValueNode TreeWriter::text32Value(std::u32string_view text) {
    return stringValue(value(TYP_UNISTR), text.size(), str32(text));
}

ValueNode TreeWriter::timeValue(MainType kind, std::string_view text) {
    return stringValue(value(kind), text.size(), str(text));
}

ValueNode TreeWriter::valueRef(std::string_view name) {
    ValueNode node = valueRefTo(1, 0);
    valueNotes[at(node.nr)].refName = name;
    return node;
}

ValueNode TreeWriter::itemOf(std::string_view typeName, std::string_view itemName) {
    ValueNode node = valueRef(itemName);
    valueNotes[at(node.nr)].refType = typeName;
    return node;
}

ValueNode TreeWriter::valueRefTo(std::int32_t moduleNr, RecNr record) {
    ValueNode node = value(TYP_SYNONYM);
    node->refModule = moduleNr;
    node->refRecord = record;
    return node;
}

ValueNode TreeWriter::listValue(MainType kind, const std::vector<ValueNode> &parts) {
    ValueNode list = value(kind);
    RecNr last = 0;
    for (ValueNode part : parts) {
        part->compStatus = 0;
        (last == 0 ? list->refRecord : vNodes[at(last)].next) = part.nr;
        last = part.nr;
    }
    return list;
}

ValueNode TreeWriter::listValue(MainType kind, std::initializer_list<ValueNode> parts) {
    return listValue(kind, std::vector<ValueNode>(parts));
}

namespace {

/* The low word of a number, or the string number of a string. */
std::uint32_t word(const VNode &node) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i < 8; ++i)
        number = number << 8 | node.value[i];
    return number;
}

} // namespace

/* The text of the whole value is stored as well: values are compared by it. */
ValueNode TreeWriter::objectIdentifier(std::initializer_list<ValueNode> arcs) {
    ValueNode node = listValue(TYP_OBJID, arcs);
    std::string text;
    for (ValueNode arc : arcs) {
        ValueNode target = arc;
        if (arc->valueKind == TYP_SYNONYM)
            target = findValue(valueNotes[at(arc.nr)].refName);
        text += text.empty() ? "" : ".";
        if (target.nr != 0 && target->valueKind == TYP_OBJID)
            text += strings8[word(target.rec()) - 1];
        else if (target.nr != 0)
            text += std::to_string(word(target.rec()));
    }
    return stringValue(node, text.size(), str(text));
}

/* --- constraints --- */

RecNr TreeWriter::range(std::int64_t low, std::int64_t high) {
    RecNr lowValue = low == MIN_VALUE ? 0 : intValue(low).nr;
    RecNr highValue = high == MAX_VALUE ? 0 : intValue(high).nr;
    return rangeOf(lowValue, highValue, SUB_LOWER_CLOSED | SUB_UPPER_CLOSED);
}

RecNr TreeWriter::rangeOf(RecNr low, RecNr high, std::uint8_t flags) {
    RecNr nr = sub(SUB_RANGE);
    SubRec &node = subRecs[at(nr)];
    node.subFlags = flags;
    node.first = low;
    node.second = high;
    return nr;
}

RecNr TreeWriter::single(RecNr value) {
    RecNr nr = sub(SUB_SINGLE_VALUE);
    subRecs[at(nr)].first = value;
    return nr;
}

RecNr TreeWriter::sub(SubKind kind, std::initializer_list<RecNr> parts) {
    SubRec node;
    node.subKind = static_cast<std::uint8_t>(kind);
    RecNr *end = &node.first;
    for (RecNr part : parts) {
        *end = part;
        end = &subRecs[at(part)].next;
    }
    return addSub(node);
}

RecNr TreeWriter::includes(TypeNode contained) {
    ValueNode place = value(TYP_NONE);
    place->refModule = 1;
    place->refRecord = contained.nr;
    RecNr nr = sub(SUB_INCLUDES);
    subRecs[at(nr)].first = place;
    return nr;
}

RecNr TreeWriter::withComponents(std::initializer_list<ComponentConstraint> parts, bool full) {
    RecNr nr = sub(SUB_WITH_COMPONENTS);
    if (full)
        subRecs[at(nr)].subFlags |= SUB_FULL_SPECIFICATION;
    RecNr last = 0;
    for (const ComponentConstraint &part : parts) {
        /* A component that is only said to be present or absent has a record of its own all the
         * same. */
        RecNr element = part.sub != 0 ? part.sub : sub(SUB_EXCEPTION);
        SubRec &node = subRecs[at(element)];
        node.subFlags |= part.presence;
        node.compModule = part.moduleNr;
        node.compTNode = part.component.nr;
        (last == 0 ? subRecs[at(nr)].first : subRecs[at(last)].next) = element;
        last = element;
    }
    return nr;
}

/* --- classes --- */

TypeNode TreeWriter::objectClass(std::initializer_list<TypeNode> fields) {
    return structure(TYP_CLASS, fields);
}

TypeNode TreeWriter::typeField(std::string_view name) {
    return comp(name, openType());
}

TypeNode TreeWriter::valueField(std::string_view name, TypeNode governor) {
    TypeNode field = comp(name, governor);
    field->nameIdx = -field->nameIdx;
    return field;
}

TypeNode TreeWriter::setField(std::string_view name, TypeNode governor) {
    TypeNode field = comp(name, governor);
    field->nodeFlags |= NODE_SET;
    return field;
}

TypeNode TreeWriter::classField(TypeNode classRef, std::initializer_list<TypeNode> path) {
    TypeNode node = type(TYP_FIELDLIST);
    node->refModule = 1;
    node->refRecord = classRef.nr;
    RecNr last = 0;
    for (TypeNode step : path) {
        RecNr added = addS({1, step.nr, 0});
        (last == 0 ? node->auxRecord : sNodes[at(last)].next) = added;
        last = added;
    }
    return node;
}

/* No definition yet: an object may stand in a set, or in a field of another one. */
ValueNode TreeWriter::object(TypeNode objClass, std::initializer_list<ValueNode> parts) {
    constexpr std::int32_t INLINE_OBJECT = 3;
    ValueNode node = listValue(TYP_CLASS, parts).governedBy(objClass);
    node->compStatus = INLINE_OBJECT;
    return node;
}

ValueNode TreeWriter::fieldValue(TypeNode field, ValueNode value) {
    return value.governedBy(field);
}

ValueNode TreeWriter::fieldType(TypeNode field, TypeNode type) {
    if (type->nameIdx == 0)
        anonymous(type)->compStatus = TCS_MANDATORY; /* it is no definition */
    ValueNode place = value(TYP_NONE);
    place->refModule = 1;
    place->refRecord = type.nr;
    return place.governedBy(field);
}

TypeNode TreeWriter::defineSet(std::string_view name, TypeNode governor, RecNr elements) {
    TypeNode node = define(name, governor).constrained(elements);
    node->nodeFlags |= NODE_SET;
    return node;
}
