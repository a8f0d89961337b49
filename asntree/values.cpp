#include "asntree/values.h"

#include <algorithm>

#include "asntree/constraints.h"
#include "asntree/objects.h"
#include "asntree/reading.h"

namespace asntree {

ValueMemos &memosOf(Compilation &c) {
    if (c.valueMemos == nullptr)
        c.valueMemos = std::make_shared<ValueMemos>();
    return *c.valueMemos;
}

TypeUse builtinType(Compilation &c, TypeKind kind) {
    auto &types = memosOf(c).builtins;
    const Type *&type = types[kind];
    if (type == nullptr)
        type = newType(c.arena, kind, {});
    return {type, &c.modules.front()->root};
}

TypeUse predefinedType(Compilation &c, std::string_view name) {
    const ModuleInfo &module = *c.modules.front();
    const auto found = module.names.find(name);
    if (found == module.names.end())
        return {};
    return {found->second->type, &module.root};
}

std::string quote(std::string_view name) {
    return "`" + std::string(name) + "`";
}

bool isDummy(const Scope *scope, const Reference &reference) {
    if (scope == nullptr || scope->definition == nullptr || reference.module.given())
        return false;
    const auto &parameters = scope->definition->parameters;
    return std::any_of(parameters.begin(), parameters.end(), [&](const FormalParameter &parameter) {
        return parameter.name.text == reference.name.text;
    });
}

void reportMismatch(Reading &reading, std::string_view expected) {
    error(reading.c.diagnostics, reading.value().place,
          "a value of " + describeType(reading.governor) + " is " + std::string(expected) +
              ", not " + std::string(kindText(reading.value().kind)));
}

namespace {

/* The governor of what a reference to a value leads to. */
TypeUse governorOfTarget(const Target &target) {
    if (target.argument != nullptr)
        return target.argument->governor;
    return {target.assignment->type, target.scope};
}

bool isValue(const Target &target) {
    if (target.argument != nullptr)
        return target.argument->kind == ArgumentKind::Value;
    return target.assignment->kind == AssignmentKind::Value;
}

/* Takes over what `whole`, the value behind a reference or field, holds. */
void takeOver(Reading &r, const Datum &whole, TypeUse governor) {
    if (whole.kind == DatumKind::Bad)
        return;
    if (isOpen(r.base.type->kind) && whole.kind != DatumKind::Open) {
        slip(r.c.diagnostics, r.value().place,
             "a value of an open type is written with its type: `Type : value`");
        memosOf(r.c).members.push_back({{nullptr, {}, governor, &whole}});
        r.datum.kind = DatumKind::Open;
        r.datum.type = governor;
        r.datum.members = memosOf(r.c).members.back();
        return;
    }
    if (!compatible(r.c, governor, r.governor)) {
        error(r.c.diagnostics, r.value().place,
              "the value is of type " + describeType(governor) + ", but one of " +
                  describeType(r.governor) + " is needed");
        return;
    }
    const Place place = r.datum.place;
    const Target reference = r.datum.reference;
    r.datum = whole;
    r.datum.place = place;
    r.datum.type = r.governor;
    r.datum.reference = reference;
}

/* True if the name is an item of the governor: that comes before values of the name. */
bool readItem(Reading &r) {
    const TypeKind kind = r.base.type->kind;
    const Reference &ref = r.value().ref;
    if ((kind != TypeKind::Integer && kind != TypeKind::Enumerated) || ref.module.given() ||
        ref.hasParameters)
        return false;
    const SettledItem *item = findItem(r.c, r.base, ref.name.text);
    if (item == nullptr)
        return false;
    r.datum.kind = kind == TypeKind::Integer ? DatumKind::Integer : DatumKind::Item;
    r.datum.number = item->number;
    r.datum.item = item->item->name.text;
    return true;
}

void reportNoItem(Reading &r) {
    std::vector<std::string_view> candidates;
    for (const SettledItem &item : itemsOf(r.c, r.base))
        candidates.push_back(item.item->name.text);
    const std::string_view near = nearestName(r.value().ref.name.text, candidates);
    std::vector<Remark> remarks;
    if (!near.empty())
        remarks.push_back({{}, "did you mean " + quote(near) + "?"});
    error(r.c.diagnostics, r.value().place,
          quote(r.value().ref.name.text) + " is no item of " + describeType(r.governor), remarks);
}

/* Reads a value that is a reference to a reference and so on from the far end, lest a long chain
   need as many calls within one another. */
void settleChain(Compilation &c, Target target) {
    std::vector<Target> chain;
    const Value *mark = nullptr; /* comes back if the chain goes in a circle */
    const auto &known = memosOf(c).datums;
    while (target.assignment != nullptr && target.assignment->kind == AssignmentKind::Value) {
        const Value *value = target.assignment->value;
        const DatumKey key{{value, target.scope}, governorOfTarget(target)};
        if (value == nullptr || value->kind != ValueKind::Reference || value->ref.hasParameters ||
            value == mark || known.find(key) != known.end())
            break;
        if ((chain.size() & (chain.size() + 1)) == 0) /* 2^n - 1 steps were taken */
            mark = value;
        chain.push_back(target);
        target = tryResolve(c, value->ref, target.scope);
    }
    while (chain.size() > 1) {
        datumOf(c, chain.back());
        chain.pop_back();
    }
}

void readReference(Reading &r) {
    if (readItem(r))
        return;
    const Reference &ref = r.value().ref;
    if (r.base.type->kind == TypeKind::Enumerated && !isDummy(r.use.scope, ref) &&
        !tryResolve(r.c, ref, r.use.scope)) {
        reportNoItem(r);
        return;
    }
    const Target target = resolve(r.c, ref, r.use.scope);
    if (!target)
        return;
    if (!isValue(target) || classOf(r.c, governorOfTarget(target))) {
        error(r.c.diagnostics, r.value().place, quote(textOf(ref)) + " is an object, not a value");
        return;
    }
    settleChain(r.c, target);
    const Datum *whole = datumOf(r.c, target);
    r.datum.reference = target;
    takeOver(r, *whole, governorOfTarget(target));
}

/* object.&value, and Set.&value of a set with one object that sets it. */
void readField(Reading &r) {
    const Value &value = r.value();
    const int errors = r.c.diagnostics.errors;
    const auto settings = settingsOf(r.c, value.ref, value.fields, value.fieldIsUpper, r.use.scope);
    if (settings.size() > 1) {
        error(r.c.diagnostics, value.place,
              "one value is needed here, but " + std::to_string(settings.size()) +
                  " objects of the set give one");
        return;
    }
    for (const Setting &setting : settings) {
        if (setting.kind != FieldKind::FixedValue && setting.kind != FieldKind::VariableValue) {
            error(r.c.diagnostics, value.place,
                  quote("&" + std::string(value.fields.back().text)) + " does not hold a value");
            return;
        }
        takeOver(r, *readDatum(r.c, setting.value, setting.governor), setting.governor);
        return;
    }
    /* What the object of an argument leaves out is left out here too. */
    const bool isDefined = tryResolve(r.c, value.ref, r.use.scope).assignment != nullptr;
    if (isDefined && r.c.diagnostics.errors == errors)
        error(r.c.diagnostics, value.place,
              "the object does not set " + quote("&" + std::string(value.fields.back().text)));
}

void readBoolean(Reading &r) {
    const ValueKind kind = r.value().kind;
    if (kind != ValueKind::True && kind != ValueKind::False) {
        reportMismatch(r, "TRUE or FALSE");
        return;
    }
    r.datum.kind = DatumKind::Boolean;
    r.datum.isTrue = kind == ValueKind::True;
}

void readInteger(Reading &r) {
    const Value &value = r.value();
    if (value.kind == ValueKind::Number) {
        r.datum.kind = DatumKind::Integer;
        r.datum.number = Number::ofDigits(value.text, value.negative);
        if (value.negative && r.datum.number == Number{})
            error(r.c.diagnostics, value.place, "zero has no sign as an INTEGER");
        return;
    }
    if (value.kind != ValueKind::Min && value.kind != ValueKind::Max) {
        reportMismatch(r, "a whole number");
        return;
    }
    const int errors = r.c.diagnostics.errors;
    const NumberSet set = valuesOf(r.c, r.governor, ExtensionView::Root);
    if (set.empty() || r.c.diagnostics.errors != errors)
        return;
    r.datum.number = value.kind == ValueKind::Min ? set.lower() : set.upper();
    if (r.datum.number.finite())
        r.datum.kind = DatumKind::Integer;
    else
        error(r.c.diagnostics, value.place,
              describeType(r.governor) + " has no bound that " + std::string(kindText(value.kind)) +
                  " could stand for");
}

void readNull(Reading &r) {
    if (r.value().kind == ValueKind::Null)
        r.datum.kind = DatumKind::Null;
    else
        reportMismatch(r, "NULL");
}

/* Types whose values are written as those of a structure that is associated with them. */
void readAssociated(Reading &r, std::string_view name) {
    r.base = predefinedType(r.c, name);
    if (r.base)
        readStructure(r);
}

void readExternal(Reading &r) {
    const TokenRange range = r.value().tokens;
    bool is1990 = false; /* by the name of its first component */
    if (r.value().kind == ValueKind::Braced && !range.empty()) {
        const SourceFile &file = r.c.sources[range.file];
        const std::string_view first = textOf(file, file.tokens[range.begin]);
        is1990 = first == "direct-reference" || first == "indirect-reference" ||
                 first == "data-value-descriptor" || first == "encoding";
    }
    readAssociated(r, is1990 ? "External1990" : "External1994");
}

void readSimple(Reading &r) {
    switch (r.base.type->kind) {
    case TypeKind::Boolean:
        return readBoolean(r);
    case TypeKind::Integer:
        return readInteger(r);
    case TypeKind::Enumerated:
        return reportMismatch(r, "one of its items");
    case TypeKind::Null:
        return readNull(r);
    case TypeKind::Real:
        return readReal(r);
    case TypeKind::BitString:
        return readBits(r);
    case TypeKind::OctetString:
        return readOctets(r);
    case TypeKind::ObjectIdentifier:
    case TypeKind::RelativeOid:
        return readIdentifier(r);
    case TypeKind::OidIri:
    case TypeKind::RelativeOidIri:
        return readIri(r);
    case TypeKind::Macro:
        return readMacroValue(r);
    default:
        break;
    }
    if (isTime(r.base.type->kind))
        readTime(r);
    else if (isCharacterString(r.base.type->kind))
        readCharacters(r);
}

void readByKind(Reading &r) {
    switch (r.base.type->kind) {
    case TypeKind::Sequence:
    case TypeKind::Set:
        return readStructure(r);
    case TypeKind::SequenceOf:
    case TypeKind::SetOf:
        return readList(r);
    case TypeKind::Choice:
        return readChoice(r);
    case TypeKind::Any:
    case TypeKind::Field:
        return readOpen(r);
    case TypeKind::External:
        return readExternal(r);
    case TypeKind::EmbeddedPdv:
        return readAssociated(r, "EmbeddedPdv");
    case TypeKind::CharacterString:
        if (r.value().kind == ValueKind::CString)
            return readCharacters(r);
        return readAssociated(r, "CharacterStringValue");
    case TypeKind::InstanceOf:
        return readAssociated(r, "InstanceOf");
    default:
        return readSimple(r);
    }
}

void readAny(Reading &r) {
    const ValueKind kind = r.value().kind;
    if (kind == ValueKind::Bad || r.base.type->kind == TypeKind::Bad)
        return;
    if (kind == ValueKind::Reference) {
        if (!readChoiceWithoutColon(r))
            readReference(r);
    } else if (kind == ValueKind::Field) {
        readField(r);
    } else if (kind == ValueKind::Containing) {
        readContaining(r);
    } else {
        readByKind(r);
    }
}

} // namespace

const Datum *readAnew(Compilation &c, ValueUse use, TypeUse governor) {
    static const Datum bad;
    if (!use || !governor)
        return &bad;
    const DepthGuard guard(c);
    const TypeUse base = guard.ok ? baseOf(c, governor) : TypeUse{};
    if (!guard.ok)
        error(c.diagnostics, use.value->place, "values lie too deep in one another here");
    if (!base || base.type->kind == TypeKind::Reference) /* a class, which others report */
        return &bad;
    Datum &datum = c.datums.emplace_back();
    datum.place = use.value->place;
    datum.type = governor;
    Reading reading{c, use, governor, base, datum};
    readAny(reading);
    return &datum;
}

const Datum *readDatum(Compilation &c, ValueUse use, TypeUse governor) {
    if (!use || !governor)
        return readAnew(c, {}, {});
    const auto [entry, isNew] = memosOf(c).datums.try_emplace({use, governor}, nullptr);
    const Datum *&known = entry->second; /* stays where it is while others are entered */
    if (isNew) {
        known = readAnew(c, use, governor);
    } else if (known == nullptr) {
        error(c.diagnostics, use.value->place, "the value is defined by itself, in a circle");
        return readAnew(c, {}, {});
    }
    return known;
}

const Datum *datumOf(Compilation &c, const Target &target) {
    if (target.argument != nullptr)
        return readDatum(c, {target.argument->value, target.argument->scope},
                         target.argument->governor);
    if (target.assignment == nullptr || target.assignment->kind != AssignmentKind::Value)
        return readDatum(c, {}, {});
    return readDatum(c, {target.assignment->value, target.scope}, governorOfTarget(target));
}

std::optional<Number> integerOf(Compilation &c, ValueUse use) {
    if (use && use.value->kind == ValueKind::Number && !use.value->negative)
        return Number::ofDigits(use.value->text); /* as nearly all are: nothing is kept of it */
    const Datum *datum = readDatum(c, use, builtinType(c, TypeKind::Integer));
    if (datum->kind != DatumKind::Integer)
        return std::nullopt;
    return datum->number;
}

} // namespace asntree
