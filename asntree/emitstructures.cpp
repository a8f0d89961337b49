#include "asntree/emitter.h"

#include "asntree/forms.h"
#include "asntree/tags.h"

#include <algorithm>

/* SEQUENCE, SET and CHOICE with their components; items of ENUMERATED and the like. */

namespace asntree {

namespace {

/* A record of a component list. */
struct Part {
    const Component *component = nullptr; /* null: the extension marker */
    TypeUse type;
    std::string_view name; /* empty for COMPONENTS OF */
    bool addition = false;
    std::optional<std::int64_t> tag;
};

/* A structure on its way into a tree. */
struct Structure {
    Emitter &e;
    TreeState &ts;
    TypeUse use;
    bool hasMarker = false;
    bool hasSecondRoot = false;
    bool isAutomatic = false;
    bool writtenOut = false; /* COMPONENTS OF as copies of the components */
    std::vector<Part> parts; /* in the order of the tree */
};

int markersOf(const Type &type) {
    int count = 0;
    for (const Component &component : type.components)
        count += component.kind == ComponentKind::Marker ? 1 : 0;
    return count;
}

/* True if something stands behind the second marker. */
bool hasSecondRoot(const Type &type) {
    return markersOf(type) >= 2 && type.components.back().kind != ComponentKind::Marker;
}

/* True if the walk over COMPONENTS OF shows what X.680 says: the other type is a definition whose
   roots all stand in front of its marker. */
bool isWalkedRight(Emitter &e, const Component &component, const Scope *scope, int depth) {
    const Layers layers = layersOf(e, {component.type, scope});
    if (layers.uses.size() != 1 || layers.target.assignment == nullptr ||
        layers.target.scope->definition != nullptr || depth > 50)
        return false;
    const TypeUse base = baseOf(e.c, {component.type, scope});
    if (!base || hasSecondRoot(*base.type))
        return false;
    return std::all_of(base.type->components.begin(), base.type->components.end(),
                       [&](const Component &inner) {
                           return inner.kind != ComponentKind::ComponentsOf ||
                                  isWalkedRight(e, inner, base.scope, depth + 1);
                       });
}

void examine(Structure &s) {
    const Type &type = *s.use.type;
    s.hasMarker = markersOf(type) > 0 || s.use.scope->module->syntax->extensibilityImplied;
    s.hasSecondRoot = hasSecondRoot(type);
    s.isAutomatic = hasAutomaticTags(s.e.c, s.use);
    int markers = 0;
    for (const Component &component : type.components) {
        markers += component.kind == ComponentKind::Marker ? 1 : 0;
        if (component.kind != ComponentKind::ComponentsOf)
            continue;
        if (markers == 1 || (s.isAutomatic && s.hasSecondRoot) ||
            !isWalkedRight(s.e, component, s.use.scope, 0))
            s.writtenOut = true;
    }
}

/* Without COMPONENTS OF, or with them written out. */
void addSettledParts(Structure &s, const std::vector<SettledComponent> &settled) {
    for (const SettledComponent &part : settled)
        s.parts.push_back({part.component, part.type, part.name, part.addition, {}});
    if (!s.isAutomatic || !s.hasSecondRoot)
        return;
    const std::vector<std::int64_t> numbers = automaticNumbers(s.e.c, s.use);
    for (std::size_t i = 0; i < s.parts.size() && i < numbers.size(); ++i)
        s.parts[i].tag = numbers[i];
}

/* Own components, and COMPONENTS OF as items. `settled` gives own components their names. */
void addWrittenParts(Structure &s, const std::vector<SettledComponent> &settled) {
    std::unordered_map<const Component *, const SettledComponent *> known;
    for (const SettledComponent &part : settled)
        known.emplace(part.component, &part);
    int markers = 0;
    for (const Component &component : s.use.type->components) {
        markers += component.kind == ComponentKind::Marker ? 1 : 0;
        if (component.kind == ComponentKind::Marker)
            continue;
        Part part{&component, {component.type, s.use.scope}, {}, markers == 1, {}};
        if (component.kind == ComponentKind::Component) {
            auto found = known.find(&component);
            part.name = found == known.end() ? component.name.text : found->second->name;
        }
        s.parts.push_back(part);
    }
}

/* How many parts a component of the first root is. */
std::size_t partsOf(const Structure &s, const Component &component) {
    if (component.kind == ComponentKind::Component || !s.writtenOut)
        return 1;
    const std::vector<SettledComponent> &inner =
        componentsOf(s.e.c, baseOf(s.e.c, {component.type, s.use.scope}));
    return static_cast<std::size_t>(
        std::count_if(inner.begin(), inner.end(),
                      [](const SettledComponent &part) { return !part.addition; }));
}

/* The marker stands behind the first root; what follows the additions is the second. */
void insertMarker(Structure &s) {
    if (!s.hasMarker)
        return;
    std::size_t place = 0;
    for (const Component &component : s.use.type->components) {
        if (component.kind == ComponentKind::Marker)
            break;
        place += partsOf(s, component);
    }
    place = std::min(place, s.parts.size());
    s.parts.insert(s.parts.begin() + static_cast<std::ptrdiff_t>(place), Part{});
}

int statusOf(const Structure &s, const Part &part) {
    if (part.component == nullptr)
        return TCS_MANDATORY;
    if (part.component->kind == ComponentKind::ComponentsOf)
        return TCS_COMPOF;
    if (s.use.type->kind == TypeKind::Choice)
        return TCS_CHOICE;
    if (part.component->presence != Presence::Mandatory)
        return TCS_OPTIONAL;
    return part.addition && s.ts.settings.strictAdditions == 0 ? TCS_OPTIONAL : TCS_MANDATORY;
}

/* What the whole list says of the structure, COMPONENTS OF expanded. */
void setFacts(Structure &s, const Pending &pending, const std::vector<SettledComponent> &settled) {
    const bool isChoice = s.use.type->kind == TypeKind::Choice;
    int flags = s.hasMarker ? TYPE_EXTENSIBLE | (isChoice ? 0 : TYPE_HAS_OPTIONAL) : 0;
    bool lastIsMandatory = false;
    for (const SettledComponent &part : settled) {
        const bool isOptional =
            part.component->presence != Presence::Mandatory ||
            (part.addition && s.ts.settings.strictAdditions == 0);
        if (!isChoice)
            flags |= isOptional ? TYPE_HAS_OPTIONAL : TYPE_HAS_MANDATORY;
        lastIsMandatory = !isOptional;
        if (!s.isAutomatic && isUntagged(s.e.c, part.type))
            flags |= TYPE_HAS_UNTAGGED;
    }
    if (s.isAutomatic && !s.hasSecondRoot)
        flags |= TYPE_AUTOMATIC_TAGS;
    const std::size_t count = settled.size() + (s.hasMarker ? 1 : 0);
    if (count > INT16_MAX)
        refuse(s.e, s.use.type->place, "it has more components than a tree can count");
    const FormFacts facts{s.ts.settings, nullptr, {}, static_cast<int>(count), lastIsMandatory};
    TNode &node = s.ts.tree().t(pending.nr);
    const Form form = formOf(node.mainType, facts);
    node.valueFieldCode = static_cast<std::uint8_t>(form.value);
    node.controlFieldCode = static_cast<std::uint8_t>(form.control);
    node.nrOfComps = static_cast<std::int16_t>(std::min<std::size_t>(count, INT16_MAX));
    node.typeFlags = static_cast<std::uint16_t>(node.typeFlags | flags);
    if (s.hasMarker && s.ts.settings.saveExtensions != 0)
        node.optionBits |= optionMask(OPT_SAVE_EXTENSIONS);
}

void setDefault(Structure &s, RecNr nr, const Component &component, const Scope *scope) {
    if (component.presence != Presence::Default || component.defaultValue == nullptr)
        return;
    const RecNr value = emitValue(s.e, s.ts, {component.defaultValue, scope},
                                  {component.type, scope}, placeOfNode(s.ts, nr), VCS_DEFINITION);
    s.ts.tree().t(nr).defaultValue = value;
}

} // namespace

void emitStructure(Emitter &e, TreeState &ts, const Pending &pending, TypeUse structure) {
    Structure s{e, ts, structure, false, false, false, false, {}};
    examine(s);
    const std::vector<SettledComponent> &settled = componentsOf(e.c, structure);
    if (s.writtenOut || (s.isAutomatic && s.hasSecondRoot))
        addSettledParts(s, settled);
    else
        addWrittenParts(s, settled);
    insertMarker(s);
    setFacts(s, pending, settled);
    RecNr last = 0;
    for (const Part &part : s.parts) {
        const Place place = part.component == nullptr ? Place{} : part.component->place;
        const RecNr nr = newType(ts, statusOf(s, part), pending.nr, lineOf(e, place));
        ts.tree().t(nr).nameIdx = nameNr(ts, part.name);
        (last == 0 ? ts.tree().t(pending.nr).refRecord : ts.tree().t(last).next) = nr;
        last = nr;
        if (part.component == nullptr)
            ts.tree().t(nr).mainType = TYP_EXTENSION_MARKER;
        else
            ts.queue.push_back({nr, part.type, pending.frame, part.component, part.tag, "C"});
    }
    nameMembers(e, ts, ts.tree().t(pending.nr).refRecord, "C");
    RecNr nr = ts.tree().t(pending.nr).refRecord;
    for (const Part &part : s.parts) {
        if (part.component != nullptr && part.component->kind == ComponentKind::Component)
            setDefault(s, nr, *part.component, part.type.scope);
        nr = ts.tree().t(nr).next;
    }
}

/* --- items --- */

void emitItems(Emitter &e, TreeState &ts, RecNr nr, TypeUse base) {
    const bool isEnum = base.type->kind == TypeKind::Enumerated;
    const bool hasMarker =
        isEnum && (base.scope->module->syntax->extensibilityImplied ||
                   std::any_of(base.type->items.begin(), base.type->items.end(),
                               [](const NamedItem &item) { return item.marker; }));
    RecNr last = 0;
    const auto add = [&](VNode node) {
        node.governorRec = nr;
        node.governorModule = 1;
        const RecNr item = ts.tree().addV(node);
        (last == 0 ? ts.tree().t(nr).namedNumbersRec : ts.tree().v(last).next) = item;
        last = item;
    };
    VNode marker;
    marker.valueKind = TYP_EXTENSION_MARKER;
    bool markerIsOut = !hasMarker;
    for (const SettledItem &item : itemsOf(e.c, base)) {
        if (!markerIsOut && item.addition) {
            add(marker);
            markerIsOut = true;
        }
        const std::optional<std::int64_t> number = asInt64(item.number);
        if (!number)
            refuse(e, item.item->name.place, "a tree can't hold the number " + textOf(item.number));
        VNode node;
        node.nameIdx = nameNr(ts, item.item->name.text);
        node.valueKind = TYP_INTEGER;
        node.lineNr = lineOf(e, item.item->name.place);
        putValueBytes(node, 0, 8, static_cast<std::uint64_t>(number.value_or(0)));
        add(node);
    }
    if (!markerIsOut)
        add(marker);
    if (hasMarker)
        ts.tree().t(nr).typeFlags |= TYPE_EXTENSIBLE;
}

} // namespace asntree
