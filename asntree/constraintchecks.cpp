#include <algorithm>
#include <unordered_set>

#include "asntree/constraintsite.h"
#include "asntree/extents.h"
#include "asntree/objects.h"

/* Does a constraint fit the type that it is written on. */

namespace asntree {

namespace {

void checkSpec(Site &site, const ConstraintSpec &spec);
void checkElement(Site &site, const Constraint &constraint);

Site siteOf(Compilation &c, const Scope *scope, TypeUse governor, TypeUse parent) {
    Site site{c, scope, governor, baseOf(c, governor), parent, {}};
    for (std::size_t i = 0; i < ASPECTS; ++i) {
        const auto aspect = static_cast<Aspect>(i);
        site.extents[i] = parent ? extentOf(c, parent, aspect, ExtensionView::Open)
                                 : wholeExtent(c, governor, aspect);
    }
    return site;
}

bool isSized(TypeKind kind) {
    return kind == TypeKind::BitString || kind == TypeKind::OctetString ||
           kind == TypeKind::SequenceOf || kind == TypeKind::SetOf || isCharacterString(kind) ||
           kind == TypeKind::GeneralizedTime || kind == TypeKind::UtcTime;
}

/* --- constraints of one kind of types --- */

void checkSize(Site &site, const Constraint &constraint) {
    if (site.size || site.alphabet || !isSized(site.kind())) {
        refuseKind(site, constraint, "SIZE restricts strings and lists");
        return;
    }
    Site inner = site;
    inner.size = true;
    inner.governor = inner.base = builtinType(site.c, TypeKind::Integer);
    checkSpec(inner, *constraint.inner);
}

void checkAlphabet(Site &site, const Constraint &constraint) {
    if (site.size || site.alphabet || !hasAlphabet(site.kind())) {
        refuseKind(site, constraint, "FROM restricts strings of characters");
        return;
    }
    if (isTime(site.kind()))
        return;
    Site inner = site;
    inner.alphabet = true;
    checkSpec(inner, *constraint.inner);
}

void checkContained(Site &site, const Constraint &constraint) {
    if (constraint.type == nullptr)
        return;
    const TypeUse type{constraint.type, site.scope};
    const TypeUse base = baseOf(site.c, type);
    if (!base || isOpen(site.kind()) || compatible(site.c, type, site.governor))
        return;
    refuse(site, constraint.place,
           describeType(type) + " can't be included in " +
               (site.size ? "a size, which is an INTEGER" : describeType(site.governor)) +
               ": its values are of another type");
}

void checkWithComponent(Site &site, const Constraint &constraint) {
    if (site.kind() != TypeKind::SequenceOf && site.kind() != TypeKind::SetOf) {
        refuseKind(site, constraint, "WITH COMPONENT restricts SEQUENCE OF and SET OF");
        return;
    }
    const TypeUse element{site.base.type->element, site.base.scope};
    checkConstraint(site.c, {constraint.inner, site.scope, element}, element);
}

/* The structures whose components may be named for a type; more than one for EXTERNAL. */
std::vector<TypeUse> structuresOf(const Site &site) {
    switch (site.kind()) {
    case TypeKind::Sequence:
    case TypeKind::Set:
    case TypeKind::Choice:
        return {site.base};
    case TypeKind::External:
        return {predefinedType(site.c, "External1994"), predefinedType(site.c, "External1990")};
    case TypeKind::EmbeddedPdv:
        return {predefinedType(site.c, "EmbeddedPdv")};
    case TypeKind::CharacterString:
        return {predefinedType(site.c, "CharacterStringValue")};
    case TypeKind::InstanceOf:
        return {predefinedType(site.c, "InstanceOf")};
    case TypeKind::Real:
        return {predefinedType(site.c, "RealValue")};
    default:
        return {};
    }
}

void checkPart(Site &site, const std::vector<TypeUse> &structures,
               const ComponentConstraint &part) {
    const SettledComponent *component = nullptr;
    for (const TypeUse &structure : structures)
        if (component == nullptr && structure)
            component = findComponent(site.c, structure, part.name.text);
    if (component != nullptr) {
        if (part.inner != nullptr)
            checkConstraint(site.c, {part.inner, site.scope, component->type}, component->type);
        return;
    }
    std::vector<std::string_view> candidates;
    for (const TypeUse &structure : structures)
        for (const SettledComponent &other : componentsOf(site.c, structure))
            candidates.push_back(other.name);
    std::vector<Remark> remarks;
    const std::string_view near = nearestName(part.name.text, candidates);
    if (!near.empty())
        remarks.push_back({{}, "did you mean " + quote(near) + "?"});
    error(site.c.diagnostics, part.name.place,
          describeType(site.governor) + " has no component " + quote(part.name.text), remarks);
}

void checkWithComponents(Site &site, const Constraint &constraint) {
    const std::vector<TypeUse> structures = structuresOf(site);
    if (structures.empty()) {
        refuseKind(site, constraint, "WITH COMPONENTS restricts SEQUENCE, SET and CHOICE");
        return;
    }
    checkPresence(site.c, structures.front(), constraint);
    std::unordered_map<std::string_view, Place> seen;
    const ComponentConstraint *present = nullptr;
    for (const ComponentConstraint &part : constraint.parts) {
        const auto [first, isNew] = seen.try_emplace(part.name.text, part.name.place);
        if (!isNew) {
            error(site.c.diagnostics, part.name.place,
                  "the component " + quote(part.name.text) + " is restricted twice",
                  {{first->second, "first here"}});
            continue;
        }
        checkPart(site, structures, part);
        if (site.kind() != TypeKind::Choice || part.presence != PresenceWord::Present)
            continue;
        if (present != nullptr)
            error(site.c.diagnostics, part.name.place,
                  "only one alternative of a CHOICE can be PRESENT",
                  {{present->name.place, "the other one"}});
        present = &part;
    }
}

void checkPattern(Site &site, const Constraint &constraint) {
    if (!hasAlphabet(site.kind()) || site.size || site.alphabet)
        refuseKind(site, constraint, "PATTERN restricts strings of characters");
    else if (constraint.value != nullptr)
        readDatum(site.c, {constraint.value, site.scope},
                  builtinType(site.c, TypeKind::Utf8String));
}

void checkSettings(Site &site, const Constraint &constraint) {
    if (!isIsoTime(site.kind()))
        refuseKind(site, constraint, "SETTINGS restricts TIME");
    else if (constraint.value != nullptr &&
             !isTimeSettings(contentOf(site.c, *constraint.value)))
        refuse(site, constraint.value->place,
               "SETTINGS holds properties of times, as \"Basic=Date Date=YMD\"");
}

void checkContents(Site &site, const Constraint &constraint) {
    const bool bits = site.kind() == TypeKind::BitString;
    if (!bits && site.kind() != TypeKind::OctetString)
        refuseKind(site, constraint,
                   "CONTAINING and ENCODED BY restrict BIT STRING and OCTET STRING");
    else if (bits && !site.base.type->items.empty())
        refuse(site, constraint.place, "a BIT STRING with named bits can't be CONTAINING a type");
    if (constraint.value != nullptr)
        readDatum(site.c, {constraint.value, site.scope},
                  builtinType(site.c, TypeKind::ObjectIdentifier));
}

/* Braces are a value here, and so are fields of objects; fields of sets give many values. */
void checkGroup(Site &site, const Constraint &constraint) {
    const Value &value = *constraint.value;
    if (value.kind == ValueKind::Field && !value.fieldIsUpper.empty())
        settingsOf(site.c, value.ref, value.fields, value.fieldIsUpper, site.scope);
    else
        checkSingle(site, &value);
}

void checkElement(Site &site, const Constraint &constraint) {
    switch (constraint.kind) {
    case ConstraintKind::Union:
    case ConstraintKind::Intersection:
    case ConstraintKind::Except:
    case ConstraintKind::AllExcept:
        for (const Constraint *operand : constraint.operands)
            checkElement(site, *operand);
        return;
    case ConstraintKind::SingleValue:
        return checkSingle(site, constraint.value);
    case ConstraintKind::Range:
        return checkRange(site, constraint);
    case ConstraintKind::Contained:
        return checkContained(site, constraint);
    case ConstraintKind::Size:
        return checkSize(site, constraint);
    case ConstraintKind::Alphabet:
        return checkAlphabet(site, constraint);
    case ConstraintKind::WithComponent:
        return checkWithComponent(site, constraint);
    case ConstraintKind::WithComponents:
        return checkWithComponents(site, constraint);
    case ConstraintKind::Pattern:
        return checkPattern(site, constraint);
    case ConstraintKind::Settings:
        return checkSettings(site, constraint);
    case ConstraintKind::Contents:
        return checkContents(site, constraint);
    case ConstraintKind::Group:
        return checkGroup(site, constraint);
    case ConstraintKind::Table:
    case ConstraintKind::UserDefined:
    case ConstraintKind::Bad:
        return;
    }
}

/* --- whole constraints --- */

void checkException(Site &site, const ConstraintSpec &spec) {
    if (spec.exception == nullptr)
        return;
    const TypeUse type = spec.exceptionType != nullptr ? TypeUse{spec.exceptionType, site.scope}
                                                       : builtinType(site.c, TypeKind::Integer);
    readDatum(site.c, {spec.exception, site.scope}, type);
}

/* Which sets of a type a constraint may leave empty. */
std::vector<Aspect> aspectsOf(const Site &site) {
    if (site.alphabet)
        return {Aspect::Characters};
    if (site.size || site.kind() == TypeKind::Integer || site.kind() == TypeKind::Enumerated)
        return {Aspect::Values};
    std::vector<Aspect> aspects;
    if (isSized(site.kind()))
        aspects.push_back(Aspect::Sizes);
    if (isCharacterString(site.kind()))
        aspects.push_back(Aspect::Characters);
    return aspects;
}

void checkEmpty(Site &site, const ConstraintSpec &spec) {
    for (const Aspect aspect : aspectsOf(site)) {
        const NumberSet &parent = site.size ? site.extent(Aspect::Sizes) : site.extent(aspect);
        if (parent.empty() || !evaluate(questionOf(site, aspect), *spec.root, parent).set.empty())
            continue;
        refuse(site, spec.place,
               site.size || aspect == Aspect::Sizes ? "the constraint leaves no size"
               : aspect == Aspect::Characters       ? "the constraint leaves no character"
                                                    : "the constraint leaves no value");
        return;
    }
}

void checkSpec(Site &site, const ConstraintSpec &spec) {
    const DepthGuard guard(site.c);
    if (!guard.ok) {
        refuse(site, spec.place, "constraints lie too deep in one another here");
        return;
    }
    const int errors = site.c.diagnostics.errors;
    if (spec.root != nullptr)
        checkElement(site, *spec.root);
    if (spec.additions != nullptr)
        checkElement(site, *spec.additions);
    checkException(site, spec);
    if (errors == site.c.diagnostics.errors && spec.root != nullptr)
        checkEmpty(site, spec);
}

/* Serial constraints: each has what those in front of it leave as its parent. */
void narrow(Site &site, const ConstraintSpec &spec) {
    for (std::size_t i = 0; i < ASPECTS; ++i) {
        const ExtentQuestion question{site.c, site.scope, site.governor, static_cast<Aspect>(i),
                                      ExtensionView::Open};
        site.extents[i] = evaluate(question, spec, site.extents[i]).set;
    }
}

bool isCheckable(const Site &site) {
    return site.base && site.kind() != TypeKind::Bad && site.kind() != TypeKind::Macro &&
           site.kind() != TypeKind::Reference;
}

} // namespace

void checkConstraint(Compilation &c, const ConstraintUse &use, TypeUse parent) {
    if (use.spec == nullptr || !use.type)
        return;
    const DepthGuard guard(c);
    if (!guard.ok) {
        error(c.diagnostics, use.spec->place, "constraints lie too deep in one another here");
        return;
    }
    if (!baseOf(c, use.type))
        return;
    Site site = siteOf(c, use.scope, use.type, parent);
    if (isCheckable(site))
        checkSpec(site, *use.spec);
}

void checkConstraints(Compilation &c, TypeUse type) {
    if (!type || type.type->constraints.empty() || !baseOf(c, type))
        return;
    Site site = siteOf(c, type.scope, type, follow(c, type));
    if (!isCheckable(site))
        return;
    for (const ConstraintSpec *spec : type.type->constraints) {
        checkSpec(site, *spec);
        narrow(site, *spec);
    }
}

} // namespace asntree
