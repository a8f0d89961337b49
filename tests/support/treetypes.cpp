#include "tests/support/treewriter.h"

#include <cassert>

/* Types: definitions, components, references. */

namespace {

std::size_t at(RecNr nr) {
    return static_cast<std::size_t>(nr - 1);
}

TreeWriter::TypeNotes &notesOf(TypeNode type) {
    return type.tree->typeNotes[at(type.nr)];
}

/* Chains the components of `father` and returns the first. */
RecNr chain(TypeNode father, const std::vector<TypeNode> &sons) {
    for (std::size_t i = 0; i < sons.size(); ++i) {
        assert(sons[i]->next == 0 && sons[i].nr != father.nr);
        sons[i]->parentRec = father.nr;
        sons[i]->next = i + 1 < sons.size() ? sons[i + 1].nr : 0;
    }
    return sons.empty() ? 0 : sons.front().nr;
}

} // namespace

/* --- the handle --- */

TNode &TypeNode::rec() const {
    return tree->tNodes[at(nr)];
}

TypeNode TypeNode::tag(TagClass tagClass, int number, bool isExplicit) const {
    RecNr added = tree->addTag({tagClass, isExplicit ? TAG_MODE_EXPLICIT : 0, number, 0});
    RecNr *end = &rec().firstTagRec;
    while (*end != 0)
        end = &tree->tagRecs[at(*end)].next;
    *end = added;
    return *this;
}

TypeNode TypeNode::automaticTags() const {
    return flag(TYPE_AUTOMATIC_TAGS);
}

TypeNode TypeNode::optional() const {
    rec().compStatus = TCS_OPTIONAL;
    return *this;
}

TypeNode TypeNode::defaultTo(RecNr value) const {
    rec().compStatus = TCS_OPTIONAL;
    rec().defaultValue = value;
    VNode &node = tree->vNodes[at(value)];
    node.governorRec = nr;
    node.governorModule = 1;
    return *this;
}

TypeNode TypeNode::extensible() const {
    return flag(TYPE_EXTENSIBLE);
}

TypeNode TypeNode::form(ValueForm value, ValueForm control) const {
    rec().valueFieldCode = static_cast<std::uint8_t>(value);
    rec().controlFieldCode = static_cast<std::uint8_t>(control);
    notesOf(*this).formGiven = true;
    return *this;
}

TypeNode TypeNode::asList() const {
    return form(VF_LIST);
}

TypeNode TypeNode::asArray() const {
    notesOf(*this).arrayWanted = true;
    return *this;
}

TypeNode TypeNode::option(TypeOption bit) const {
    rec().optionBits |= optionMask(bit);
    return *this;
}

TypeNode TypeNode::flag(TypeFlag bit) const {
    rec().typeFlags = static_cast<std::uint16_t>(rec().typeFlags | bit);
    return *this;
}

TypeNode TypeNode::skipped(int skipKind) const {
    rec().typeOptions.skipKind = static_cast<std::uint8_t>(skipKind);
    return option(OPT_SKIPPED);
}

TypeNode TypeNode::sizeLimit(std::uint32_t limit, bool tooLongIsError) const {
    rec().typeOptions.sizeLimit = limit;
    rec().typeOptions.sizeLimitMode = tooLongIsError ? 1 : 0;
    return *this;
}

TypeNode TypeNode::lengthForm(std::uint8_t form) const {
    rec().typeOptions.definiteLength = form;
    return *this;
}

TypeNode TypeNode::constrained(RecNr sub) const {
    RecNr &root = rec().constraintRec;
    root = root == 0 ? sub : tree->sub(SUB_CATENATION, {root, sub});
    return *this;
}

TypeNode TypeNode::endpoints(std::int64_t low, std::int64_t high) const {
    rec().lowerEndpoint = asntree::storedNumber(low);
    rec().upperEndpoint = asntree::storedNumber(high);
    notesOf(*this).endpointsGiven = true;
    return *this;
}

TypeNode TypeNode::line(int number) const {
    rec().lineNr = number;
    return *this;
}

TypeNode TypeNode::entry(int functions, int categories) const {
    rec().entryFlags = static_cast<std::uint8_t>(ENTRY_TYPE_FLAG | functions);
    rec().entryCategories = static_cast<std::uint8_t>(categories);
    return *this;
}

TypeNode TypeNode::exported(bool is) const {
    rec().nodeFlags = is ? rec().nodeFlags | NODE_EXPORTED : rec().nodeFlags & ~NODE_EXPORTED;
    return *this;
}

TypeNode TypeNode::hidden() const {
    rec().skipInWalk = 1;
    return *this;
}

TypeNode TypeNode::backendOption(std::string_view text) const {
    notesOf(*this).options.push_back({TED_BACKEND_OPTION, tree->str(text)});
    return *this;
}

TypeNode TypeNode::naming(std::string_view text) const {
    notesOf(*this).options.push_back({TED_OPTION, tree->str(text)});
    return option(OPT_NAMING);
}

TypeNode TypeNode::text(std::string_view place, std::string_view line) const {
    std::string stored = "-" + std::string(place) + " " + std::string(line);
    notesOf(*this).options.push_back({TED_TEXT, tree->str(stored)});
    return option(OPT_EMBEDDED_TEXT);
}

/* --- definitions --- */

TypeNode TreeWriter::define(std::string_view name, TypeNode type) {
    assert(type.tree == this && type->next == 0 && type.nr != lastDefinition);
    type->nameIdx = str(name);
    type->compStatus = TCS_HEADER;
    type->parentRec = 0;
    if (header().exportsMode == 0)
        type.exported();
    RecNr &end = lastDefinition == 0 ? header().firstTNode : tNodes[at(lastDefinition)].next;
    end = type.nr;
    lastDefinition = type.nr;
    typeNames.emplace(name, type.nr);
    return type;
}

TypeNode TreeWriter::findType(std::string_view name) const {
    auto found = typeNames.find(std::string(name));
    return {const_cast<TreeWriter *>(this), found == typeNames.end() ? 0 : found->second};
}

/* --- types --- */

TypeNode TreeWriter::type(MainType mainType) {
    TNode node;
    node.mainType = static_cast<std::uint8_t>(mainType);
    node.compStatus = TCS_HEADER;
    node.typeOptions.definiteLength = LENGTH_FORM_NOT_SET;
    return {this, addT(node)};
}

TypeNode TreeWriter::integer(std::int64_t low, std::int64_t high) {
    return integer().constrained(range(low, high));
}

TypeNode TreeWriter::string(MainType mainType, std::int64_t low, std::int64_t high) {
    return type(mainType).constrained(size(low, high));
}

TypeNode TreeWriter::numbered(TypeNode type, std::initializer_list<NamedNumber> numbers) {
    RecNr last = 0;
    for (const NamedNumber &number : numbers) {
        ValueNode item = number.name == nullptr ? value(TYP_EXTENSION_MARKER)
                                                : intValue(number.number).named(number.name);
        if (number.name == nullptr)
            type.extensible();
        item->compStatus = 0;
        item.governedBy(type);
        (last == 0 ? type->namedNumbersRec : vNodes[at(last)].next) = item.nr;
        last = item.nr;
    }
    return type;
}

TypeNode TreeWriter::enumerated(std::initializer_list<NamedNumber> items) {
    return numbered(type(TYP_ENUM), items);
}

TypeNode TreeWriter::anyDefinedBy(TypeNode classifier) {
    TypeNode any = type(TYP_ANY);
    any->auxRecord = addS({1, classifier.nr, 0});
    return any;
}

void TreeWriter::anyEntry(TypeNode any, std::string_view valueName, std::string_view typeName) {
    std::string text = "$ANY=" + std::string(valueName) + ":" + std::string(typeName);
    notesOf(any).options.push_back({TED_OPTION, str(text)});
}

/* --- structures and lists --- */

TypeNode TreeWriter::structure(MainType mainType, const std::vector<TypeNode> &comps) {
    TypeNode father = type(mainType);
    father->refRecord = chain(father, comps);
    if (mainType == TYP_CHOICE)
        for (TypeNode comp : comps)
            if (comp->mainType != TYP_EXTENSION_MARKER)
                comp->compStatus = TCS_CHOICE;
    return father;
}

TypeNode TreeWriter::sequence(std::initializer_list<TypeNode> comps) {
    return structure(TYP_SEQ, comps);
}

TypeNode TreeWriter::set(std::initializer_list<TypeNode> comps) {
    return structure(TYP_SET, comps);
}

TypeNode TreeWriter::choice(std::initializer_list<TypeNode> comps) {
    return structure(TYP_CHOICE, comps);
}

TypeNode TreeWriter::comp(std::string_view name, TypeNode type) {
    assert(type.tree == this && type->nameIdx == 0);
    type->nameIdx = str(name);
    type->compStatus = TCS_MANDATORY;
    return type;
}

TypeNode TreeWriter::componentsOf(TypeNode reference) {
    reference->compStatus = TCS_COMPOF;
    return reference;
}

TypeNode TreeWriter::marker() {
    TypeNode node = type(TYP_EXTENSION_MARKER);
    node->compStatus = TCS_MANDATORY;
    return node;
}

TypeNode TreeWriter::listOf(MainType mainType, TypeNode element) {
    TypeNode list = type(mainType);
    list->refRecord = chain(list, {element});
    element->compStatus = TCS_MULTIPLE;
    return list;
}

TypeNode TreeWriter::listOf(MainType mainType, TypeNode element, std::int64_t low,
                            std::int64_t high) {
    return listOf(mainType, element).constrained(size(low, high));
}

/* --- references --- */

TypeNode TreeWriter::ref(std::string_view name) {
    TypeNode reference = refTo(1, 0);
    notesOf(reference).refName = name;
    return reference;
}

TypeNode TreeWriter::ref(const TreeWriter &other, std::string_view name) {
    TypeNode reference = refTo(import(other), 0);
    notesOf(reference).refName = name;
    notesOf(reference).refTree = &other;
    return reference;
}

TypeNode TreeWriter::refTo(std::int32_t moduleNr, RecNr record) {
    TypeNode reference = type(TYP_SYNONYM);
    reference->refModule = moduleNr;
    reference->refRecord = record;
    return reference;
}

namespace {

/* The component with this name, 0 if there is none. */
RecNr componentOf(TypeNode structure, std::string_view name) {
    RecNr found = structure->refRecord;
    const TreeWriter &tree = *structure.tree;
    const auto nameOf = [&](RecNr nr) { return tree.strings8[at(tree.tNodes[at(nr)].nameIdx)]; };
    while (found != 0 && nameOf(found) != name)
        found = tree.tNodes[at(found)].next;
    return found;
}

} // namespace

TypeNode TreeWriter::selection(std::string_view alternative, TypeNode choice) {
    const std::int32_t moduleNr = choice.tree == this ? 1 : import(*choice.tree);
    const TypeNode reference = choice.tree == this ? choice : refTo(moduleNr, choice.nr);
    TypeNode node = type(TYP_SELECTION);
    node->refModule = 1;
    node->refRecord = reference.nr;
    node->auxRecord = addS({moduleNr, componentOf(choice, alternative), 0});
    return node;
}

TypeNode TreeWriter::parameterisedHead(std::string_view name, TypeNode type) {
    type->nameIdx = str(name);
    type->compStatus = TCS_PARAM_HEAD;
    return type;
}

TypeNode TreeWriter::instance(TypeNode head) {
    TypeNode node = refTo(1, head.nr);
    node->auxRecord = addS({1, head.nr, 0});
    return node;
}

TypeNode TreeWriter::anonymous(TypeNode type) {
    type->parentRec = 1;
    return type.hidden();
}
