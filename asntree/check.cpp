#include "asntree/check.h"

#include "asntree/instances.h"

/* The walk over all definitions. */

namespace asntree {

namespace {

void checkTypeAssignment(Compilation &c, const Assignment &assignment, const Scope *scope) {
    const TypeUse type{assignment.type, scope};
    if (!classOf(c, type))
        checkType(c, type);
}

void checkValueAssignment(Compilation &c, const Assignment &assignment, const Scope *scope) {
    const TypeUse governor{assignment.type, scope};
    const ValueUse value{assignment.value, scope};
    if (const ClassUse objectClass = classOf(c, governor)) {
        const ObjectUse object = objectOf(c, value, objectClass);
        if (object && object.value == assignment.value)
            checkObject(c, {object.value, object.scope, object.objectClass, &assignment});
        return;
    }
    checkType(c, governor);
    if (baseOf(c, governor))
        checkValue(c, value, governor);
}

void checkSetAssignment(Compilation &c, const Assignment &assignment, const Scope *scope) {
    const TypeUse governor{assignment.type, scope};
    const SetUse set = setOfDefinition(c, &assignment, scope);
    if (const ClassUse objectClass = classOf(c, governor)) {
        checkObjectSet(c, set, objectClass);
        return;
    }
    checkType(c, governor);
    if (baseOf(c, governor))
        checkSetElements(c, set, governor);
}

void checkAssignment(Compilation &c, const Assignment &assignment, const Scope *scope) {
    switch (assignment.kind) {
    case AssignmentKind::Type:
        checkTypeAssignment(c, assignment, scope);
        break;
    case AssignmentKind::Class:
        checkClass(c, {assignment.objectClass, scope, &assignment});
        break;
    case AssignmentKind::Value:
        checkValueAssignment(c, assignment, scope);
        break;
    case AssignmentKind::Set:
        checkSetAssignment(c, assignment, scope);
        break;
    case AssignmentKind::Macro:
        break;
    }
}

void checkParameters(Compilation &c, const Assignment &assignment) {
    for (std::size_t i = 0; i < assignment.parameters.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (assignment.parameters[i].name.text == assignment.parameters[j].name.text)
                error(c.diagnostics, assignment.parameters[i].name.place,
                      "`" + std::string(assignment.parameters[i].name.text) +
                          "` is the name of two parameters",
                      {{assignment.parameters[j].name.place, "the first one"}});
}

/* Governors that are no parameters themselves. */
void checkGovernors(Compilation &c, const Assignment &assignment, const Scope *scope) {
    for (const FormalParameter &parameter : assignment.parameters) {
        const TypeUse governor{parameter.governor, scope};
        if (governor && !classOf(c, governor))
            checkType(c, governor);
    }
}

/* The body of a parameterized definition with arguments that nothing is known of: what doesn't
   depend on them is checked although nobody may use the definition. */
const Scope *abstractScope(Compilation &c, const Assignment &assignment) {
    auto scope = std::make_unique<Scope>();
    scope->module = moduleOf(c, &assignment);
    scope->definition = &assignment;
    scope->arguments.resize(assignment.parameters.size());
    const Scope *result = scope.get();
    c.instances.emplace(Instance{&assignment, "?"}, std::move(scope));
    return result;
}

/* A set that is one other set was checked as that. */
bool isNamedSet(const ConstraintSpec &set) {
    return set.root != nullptr && set.root->kind == ConstraintKind::Contained &&
           set.additions == nullptr;
}

/* What is given for a parameter has to be what its governor asks for, whether the body uses it or
   not. */
void checkArgument(Compilation &c, const Argument &argument) {
    const TypeUse governor = argument.governor;
    switch (argument.kind) {
    case ArgumentKind::Value:
        if (baseOf(c, governor))
            checkValue(c, {argument.value, argument.scope}, governor);
        break;
    case ArgumentKind::ValueSet:
        if (baseOf(c, governor))
            checkSetElements(c, {argument.set, argument.scope}, governor);
        break;
    case ArgumentKind::Object: {
        const ObjectUse object =
            objectOf(c, {argument.value, argument.scope}, classOf(c, governor));
        if (object && object.value == argument.value)
            checkObject(c, object);
        break;
    }
    case ArgumentKind::ObjectSet: {
        const SetUse set{argument.set, argument.scope};
        if (isNamedSet(*argument.set))
            readObjectSet(c, set, classOf(c, governor));
        else
            checkObjectSet(c, set, classOf(c, governor));
        break;
    }
    default:
        break;
    }
}

/* Instances make further instances while they are checked, so the list is gone through until it has
   stopped growing. */
void checkInstances(Compilation &c) {
    while (!c.uncheckedInstances.empty()) {
        const Scope *scope = c.uncheckedInstances.front();
        c.uncheckedInstances.pop_front();
        for (const Argument &argument : scope->arguments)
            checkArgument(c, argument);
        const std::size_t known = c.diagnostics.list.size();
        checkAssignment(c, *scope->definition, scope);
        if (scope->arguments.empty())
            continue;
        for (std::size_t i = known; i < c.diagnostics.list.size(); ++i)
            c.diagnostics.list[i].remarks.push_back(
                {scope->arguments.front().place, "with these parameters"});
    }
}

} // namespace

void checkModules(Compilation &c) {
    for (const auto &info : c.modules) {
        if (info->predefined)
            continue;
        for (const Assignment *assignment : info->syntax->assignments) {
            if (!assignment->parameterized) {
                checkAssignment(c, *assignment, &info->root);
                continue;
            }
            checkParameters(c, *assignment);
            const Scope *scope = abstractScope(c, *assignment);
            checkGovernors(c, *assignment, scope);
            checkAssignment(c, *assignment, scope);
        }
        checkInstances(c);
    }
    checkFiniteSizes(c);
}

} // namespace asntree
