#include "asntree/emitter.h"

#include "asntree/classes.h"
#include "asntree/forms.h"
#include "asntree/reading.h"
#include "store/ketramac.h"

/* Types: references, builtin types, lists. */

namespace asntree {

RecNr newType(TreeState &ts, int status, RecNr parent, std::int32_t line) {
    TNode node;
    node.compStatus = status;
    node.parentRec = parent;
    node.lineNr = line;
    node.typeOptions.definiteLength = LENGTH_FORM_NOT_SET;
    node.lowerEndpoint = storedNumber(INT64_MIN);
    node.upperEndpoint = storedNumber(INT64_MAX);
    return ts.tree().addT(node);
}

namespace {

/* A hidden node of a builtin type without anything. */
RecNr plainNode(TreeState &ts, MainType mainType, ValueForm form) {
    const RecNr nr = newType(ts, TCS_HEADER, 1, 0);
    TNode &node = ts.tree().t(nr);
    node.mainType = static_cast<std::uint8_t>(mainType);
    node.valueFieldCode = static_cast<std::uint8_t>(form);
    node.skipInWalk = 1;
    return nr;
}

} // namespace

RecNr plainInteger(TreeState &ts) {
    if (ts.plainInteger == 0)
        ts.plainInteger = plainNode(ts, TYP_INTEGER, VF_I64);
    return ts.plainInteger;
}

RecNr plainIdentifier(TreeState &ts) {
    if (ts.plainIdentifier == 0)
        ts.plainIdentifier = plainNode(ts, TYP_OBJID, VF_OBJI);
    return ts.plainIdentifier;
}

RecNr hiddenType(Emitter &e, TreeState &ts, TypeUse use, const InstanceFrame *frame, int status) {
    const RecNr nr = newType(ts, status, 1, lineOf(e, use.type->place));
    ts.tree().t(nr).skipInWalk = 1;
    ts.queue.push_back({nr, use, frame, nullptr, {}, {}});
    return nr;
}

NodeReference governorNode(Emitter &e, TreeState &ts, TypeUse use) {
    const Layers layers = layersOf(e, use);
    bool isPlain = layers.target.assignment != nullptr && layers.target.scope != nullptr &&
                   layers.target.scope->definition == nullptr;
    for (const TypeUse &layer : layers.uses)
        isPlain = isPlain && layer.type->tags.empty() && layer.type->constraints.empty();
    if (isPlain)
        if (auto found = e.types.find(layers.target.assignment); found != e.types.end())
            return {found->second.tree, found->second.nr};
    return {ts.number, hiddenType(e, ts, use, nullptr)};
}

/* --- layers --- */

namespace {

constexpr std::size_t MAX_LAYERS = 1000;

/* The next layer of a reference; empty if the chain ends here. */
TypeUse layerBehindReference(Emitter &e, TypeUse use, Layers &layers) {
    const Target target = resolve(e.c, use.type->ref, use.scope);
    if (target.argument != nullptr) {
        layers.isDummy.back() = use.scope->definition != nullptr;
        return follow(e.c, use);
    }
    if (target.assignment == nullptr)
        return {};
    if (target.assignment->kind == AssignmentKind::Macro)
        return macroUse(e, use);
    const bool isInstance = target.scope != nullptr && target.scope->definition != nullptr;
    const bool stands = isInstance ? target.assignment->kind == AssignmentKind::Type
                                   : e.types.contains(target.assignment) ||
                                         e.excluded.contains(target.assignment);
    if (!stands)
        return follow(e.c, use);
    layers.target = target;
    return {};
}

TypeUse nextLayer(Emitter &e, TypeUse use, Layers &layers) {
    switch (use.type->kind) {
    case TypeKind::Reference:
        return layerBehindReference(e, use, layers);
    case TypeKind::Selection:
        return follow(e.c, use);
    case TypeKind::Field: {
        const FieldTarget field = fieldTarget(e.c, use);
        if (field && (field.kind == FieldKind::FixedValue || field.kind == FieldKind::FixedSet))
            return governorOf(field.lastClass, *field.last());
        return field ? TypeUse{} : follow(e.c, use);
    }
    case TypeKind::Macro:
        return typeOfMacro(e, use);
    default:
        return {};
    }
}

} // namespace

Layers layersOf(Emitter &e, TypeUse use) {
    Layers layers;
    while (use && layers.uses.size() < MAX_LAYERS) {
        layers.uses.push_back(use);
        layers.isDummy.push_back(false);
        use = nextLayer(e, use, layers);
    }
    return layers;
}

bool referTo(Emitter &e, TreeState &ts, RecNr nr, const Assignment *definition) {
    auto found = e.types.find(definition);
    if (found == e.types.end()) {
        leaveOut(e, e.current == nullptr ? Place{} : e.current->name.place,
                 "it refers to `" + std::string(definition->name.text) + "`, which is left out");
        return false;
    }
    const std::int32_t module = moduleNumber(e, ts, found->second.tree);
    TNode &node = ts.tree().t(nr);
    node.mainType = TYP_SYNONYM;
    node.refModule = module;
    node.refRecord = found->second.nr;
    return true;
}

/* --- builtin types --- */

namespace {

const ModuleSettings &settingsOfModule(Emitter &e, const ModuleInfo *module,
                                       const ModuleSettings &otherwise) {
    auto found = e.plan.treeOfModule.find(module);
    return found != e.plan.treeOfModule.end() && found->second < e.trees.size()
               ? e.trees[found->second].settings
               : otherwise;
}

} // namespace

bool emittedAsOctets(Emitter &e, TypeUse base) {
    if (!base || base.type->kind != TypeKind::Integer)
        return false;
    if (e.octetTypes.contains(base.type))
        return true;
    if (base.type->constraints.empty())
        return false;
    const ModuleSettings &settings =
        settingsOfModule(e, base.scope->module, e.trees.front().settings);
    return exceeds64Bits(valuesOf(e.c, base,
                                  settings.extConstraints == ExtConstraints::None
                                      ? ExtensionView::Open
                                      : ExtensionView::Root));
}

int mainTypeOf(Emitter &e, TypeUse base) {
    const auto external = [&] {
        return settingsOfModule(e, base.scope->module, e.trees.front().settings).external;
    };
    if (base.type->kind == TypeKind::External && external() == VF_EXTERNAL_1990)
        return TYP_EXTERNAL_1990;
    const BuiltinKind *const row = builtinKind(base.type->kind);
    return row == nullptr || emittedAsOctets(e, base) ? TYP_OCTSTR : row->mainType;
}

namespace {

/* The numbers or sizes that decide the form of a node. */
NumberSet extentOf(Emitter &e, TreeState &ts, TypeUse use, TypeUse base, int mainType) {
    if (mainType == TYP_ENUM) {
        NumberSet items;
        for (const SettledItem &item : itemsOf(e.c, base))
            items = items.empty() ? NumberSet::of(item.number, item.number)
                                  : NumberSet::of(std::min(items.lower(), item.number),
                                                  std::max(items.upper(), item.number));
        return items;
    }
    if (mainType == TYP_INTEGER)
        return valuesOf(e.c, use, viewOf(ts));
    if (!hasSizeKind(mainType) || replacedTag(e, base) != 0)
        return NumberSet::of(Number::of(0), Number::greatest());
    return constrainedSizes(e, ts, use);
}

void emitElement(Emitter &e, TreeState &ts, const Pending &pending, TypeUse list) {
    const Type *element = list.type->element;
    const RecNr nr = newType(ts, TCS_MULTIPLE, pending.nr, lineOf(e, element->place));
    ts.tree().t(pending.nr).refRecord = nr;
    ts.tree().t(pending.nr).nrOfComps = 1;
    ts.queue.push_back({nr, {element, list.scope}, pending.frame, element, {}, {}});
}

/* The component beside an ANY DEFINED BY that its identifier names. */
void emitClassifier(TreeState &ts, RecNr nr, std::string_view name) {
    const RecNr father = ts.tree().t(nr).parentRec;
    if (name.empty() || father == 0)
        return;
    const RecNr wanted = ts.tree().str(treeName(name));
    RecNr sibling = isStructureKind(ts.tree().t(father).mainType) ? ts.tree().t(father).refRecord : 0;
    while (sibling != 0 && ts.tree().t(sibling).nameIdx != wanted)
        sibling = ts.tree().t(sibling).next;
    if (sibling != 0)
        ts.tree().t(nr).auxRecord = ts.tree().addS({1, sibling, 0});
}

/* Words for what has a fixed place need a greatest size. */
void checkFixedPlace(Emitter &e, const Words &words, const NumberSet &extent) {
    const bool hasBound = !extent.empty() && extent.upper().finite();
    const GivenWord *word = words.has(WordKind::String) && words.isStatic
                                ? words.find(WordKind::String)
                            : words.list == ListWord::Array ? words.find(WordKind::List)
                                                            : nullptr;
    if (word != nullptr && !hasBound)
        error(e.c.diagnostics, word->place,
              "`" + word->text + "` can't be obeyed: the size has no upper bound in the tree");
}

/* A tree has numbers of 63 bits and MAX, so what of a `uint64` lies above them is never out of range. */
void noteLargeBound(Emitter &e, TreeState &ts, const NumberSet &extent) {
    constexpr const char *what = "bounds from 9223372036854775807 to 18446744073709551614";
    if (extent.upper() < Number::ofDigits("18446744073709551615") &&
        ts.uncheckedNoted.insert(what).second)
        addNote(e, ts, std::string(what) +
                           " can't be checked by generated code; this stands for all of them");
}

void setForm(Emitter &e, TreeState &ts, const Pending &pending, TypeUse base) {
    const int mainType = ts.tree().t(pending.nr).mainType;
    const Words *words = wordsOf(e, pending.item);
    const FormFacts facts{ts.settings, words,
                          extentOf(e, ts, pending.use, base, mainType), 0, false};
    const Form form = formOf(mainType, facts);
    if (words != nullptr)
        checkFixedPlace(e, *words, facts.extent);
    if (mainType == TYP_INTEGER && form.value == VF_UI64 && facts.extent.upper().finite())
        noteLargeBound(e, ts, facts.extent);
    TNode &node = ts.tree().t(pending.nr);
    node.valueFieldCode = static_cast<std::uint8_t>(form.value);
    node.controlFieldCode = static_cast<std::uint8_t>(form.control);
    node.optionBits |= form.options;
    if (words != nullptr && words->has(WordKind::List) && words->list != ListWord::List)
        ts.arrayWords.emplace(pending.nr, words->find(WordKind::List));
}

/* The type that says what a builtin type holds; the type itself for all but two. */
TypeUse associatedType(Emitter &e, TypeUse base) {
    if (base.type->kind == TypeKind::EmbeddedPdv)
        return predefinedType(e.c, "EmbeddedPdv");
    if (base.type->kind == TypeKind::CharacterString)
        return predefinedType(e.c, "CharacterStringValue");
    return base;
}

void fillBuiltin(Emitter &e, TreeState &ts, const Pending &pending, TypeUse base) {
    const int mainType = mainTypeOf(e, base);
    base = associatedType(e, base);
    ts.tree().t(pending.nr).mainType = static_cast<std::uint8_t>(mainType);
    if (isStructureKind(mainType))
        return emitStructure(e, ts, pending, base);
    if (isListKind(mainType) && base.type->element != nullptr)
        emitElement(e, ts, pending, base);
    if (mainType == TYP_ANY)
        emitClassifier(ts, pending.nr, base.type->identifier.text);
    if (base.type->hasItems && mainType != TYP_OCTSTR)
        emitItems(e, ts, pending.nr, base);
    setForm(e, ts, pending, base);
}

} // namespace

void fillFromLayers(Emitter &e, TreeState &ts, const Pending &pending, const Layers &layers) {
    if (!layers.last() || layers.uses.size() >= MAX_LAYERS) {
        ts.tree().t(pending.nr).mainType = TYP_NULL; /* a mistake, which was reported */
        return;
    }
    const TypeUse last = layers.last();
    if (layers.target.assignment != nullptr && layers.target.scope->definition != nullptr) {
        emitInstance(e, ts, pending, layers);
        return applyWords(e, ts, pending);
    }
    if (layers.target.assignment != nullptr) {
        if (!referTo(e, ts, pending.nr, layers.target.assignment))
            return;
    } else if (last.type->kind == TypeKind::Field) {
        fillOpenField(e, ts, pending.nr, last);
    } else if (last.type->kind == TypeKind::Macro || last.type->kind == TypeKind::Reference ||
               last.type->kind == TypeKind::Selection || last.type->kind == TypeKind::Bad) {
        return refuse(e, last.type->place, "a tree can't hold instances of this macro");
    } else {
        fillBuiltin(e, ts, pending, last);
    }
    emitTags(e, ts, pending, layers);
    emitConstraints(e, ts, pending, layers);
    applyWords(e, ts, pending);
}

void fillType(Emitter &e, TreeState &ts, const Pending &pending) {
    fillFromLayers(e, ts, pending, layersOf(e, pending.use));
}

void runQueue(Emitter &e, TreeState &ts) {
    /* Components that are copied, with copies in them, may double one another. */
    constexpr std::size_t MOST_TYPES = 300'000;
    const std::size_t most = e.failed ? MOST_TYPES / 1000 : MOST_TYPES;
    for (std::size_t count = 0; !ts.queue.empty(); ++count) {
        const Pending pending = ts.queue.front();
        ts.queue.pop_front();
        fillType(e, ts, pending);
        if (count < most)
            continue;
        if (!e.failed)
            refuse(e, pending.use.type->place, "it comes to more types than a tree can hold");
        ts.queue.clear();
    }
}

} // namespace asntree
