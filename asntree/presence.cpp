#include "asntree/constraints.h"
#include "asntree/reading.h"

/* What WITH COMPONENTS says of the presence of components, and in which order. */

namespace asntree {

namespace {

void checkOrder(Compilation &c, TypeUse structure, const Constraint &constraint) {
    const std::vector<SettledComponent> &components = componentsOf(c, structure);
    const SettledComponent *last = nullptr;
    std::unordered_set<std::string_view> seen; /* twice is another mistake */
    for (const ComponentConstraint &part : constraint.parts) {
        const SettledComponent *component = findComponent(c, structure, part.name.text);
        if (component == nullptr || !seen.insert(part.name.text).second)
            continue;
        if (last != nullptr && component - components.data() < last - components.data())
            slip(c.diagnostics, part.name.place,
                 quote(part.name.text) +
                     " is out of order: WITH COMPONENTS has the order of the SEQUENCE");
        last = component;
    }
}

/* A component that is never missing can't be ABSENT, and without any alternative left a CHOICE has
   no value. */
void checkAbsent(Compilation &c, TypeUse structure, const Constraint &constraint) {
    const bool choice = structure.type->kind == TypeKind::Choice;
    std::unordered_set<std::string_view> absent;
    for (const ComponentConstraint &part : constraint.parts) {
        const SettledComponent *component = findComponent(c, structure, part.name.text);
        if (component == nullptr || part.presence != PresenceWord::Absent)
            continue;
        absent.insert(part.name.text);
        if (!choice && !component->addition &&
            component->component->presence == Presence::Mandatory)
            slip(c.diagnostics, part.name.place,
                 quote(part.name.text) + " can't be ABSENT, since it is not OPTIONAL");
    }
    bool extensible = false;
    for (const Component &component : structure.type->components)
        extensible = extensible || component.kind == ComponentKind::Marker;
    if (choice && !extensible && absent.size() == componentsOf(c, structure).size())
        error(c.diagnostics, constraint.place, "the constraint leaves no alternative of the CHOICE");
}

} // namespace

void checkPresence(Compilation &c, TypeUse structure, const Constraint &constraint) {
    if (!structure)
        return;
    if (structure.type->kind == TypeKind::Sequence)
        checkOrder(c, structure, constraint);
    checkAbsent(c, structure, constraint);
}

} // namespace asntree
