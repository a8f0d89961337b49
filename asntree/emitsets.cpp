#include "asntree/emitter.h"

#include "asntree/objects.h"
#include "asntree/references.h"

/* Value sets and object sets. */

namespace asntree {

namespace {

/* An object set on its way into a constraint. */
struct ObjectSet {
    Emitter &e;
    TreeState &ts;
    ClassUse objectClass;
    bool isSetting; /* in a field of an object: neither a marker nor a set that may have one */
    std::vector<RecNr> parts;

    void addMarker() {
        if (isSetting)
            return;
        SubRec node;
        node.subKind = SUB_EXTENDED_VALUE_SET;
        parts.push_back(ts.tree().addSub(node));
    }
    void addObject(const ObjectUse &use) {
        SubRec node;
        node.subKind = SUB_SINGLE_VALUE;
        node.first = emitObject(e, ts, use, VCS_DEFINITION);
        parts.push_back(ts.tree().addSub(node));
    }
};

/* A set that is named in a set: a hidden reference to it, unless it stands in this tree. */
RecNr containedSet(ObjectSet &set, const Assignment *definition) {
    auto found = set.e.types.find(definition);
    if (found == set.e.types.end())
        return 0;
    RecNr type = found->second.nr;
    if (found->second.tree != set.ts.number) {
        type = newType(set.ts, TCS_MANDATORY, 1, 0);
        set.ts.tree().t(type).skipInWalk = 1;
        set.ts.tree().t(type).nodeFlags = NODE_SET;
        referTo(set.e, set.ts, type, definition);
    }
    const PlaceNr governor = placeOfNode(set.ts, classNode(set.e, set.ts, set.objectClass));
    VNode node;
    node.valueKind = TYP_NONE;
    node.compStatus = VCS_DEFINITION;
    node.valueFlags = VALUE_SET;
    node.refModule = 1;
    node.refRecord = type;
    SubRec sub;
    sub.subKind = SUB_INCLUDES;
    sub.first = set.ts.tree().addV(node);
    governBy(set.e, set.ts, sub.first, governor);
    return set.ts.tree().addSub(sub);
}

/* One element of a union; false if the objects have to be worked out. */
bool addElement(ObjectSet &set, const Constraint &constraint, const Scope *scope) {
    if (constraint.kind == ConstraintKind::Union) {
        for (const Constraint *operand : constraint.operands)
            if (!addElement(set, *operand, scope))
                return false;
        return true;
    }
    if (constraint.kind == ConstraintKind::Contained && !set.isSetting &&
        constraint.type != nullptr && constraint.type->kind == TypeKind::Reference) {
        const Target target = resolve(set.e.c, constraint.type->ref, scope);
        if (target.assignment == nullptr || target.scope->definition != nullptr)
            return false;
        const RecNr part = containedSet(set, target.assignment);
        if (part != 0)
            set.parts.push_back(part);
        return part != 0;
    }
    if ((constraint.kind != ConstraintKind::SingleValue &&
         constraint.kind != ConstraintKind::Group) ||
        constraint.value == nullptr || constraint.value->kind == ValueKind::Field)
        return false;
    const ObjectUse use = objectOf(set.e.c, {constraint.value, scope}, set.objectClass);
    if (use)
        set.addObject(use);
    return bool(use);
}

bool addWritten(ObjectSet &set, SetUse use) {
    if (use.set->root != nullptr && !addElement(set, *use.set->root, use.scope))
        return false;
    if (use.set->extensible)
        set.addMarker();
    return use.set->additions == nullptr || addElement(set, *use.set->additions, use.scope);
}

RecNr emitObjectSet(Emitter &e, TreeState &ts, SetUse use, ClassUse objectClass, bool isSetting) {
    const ObjectSetInfo &info = readObjectSet(e.c, use, objectClass);
    ObjectSet set{e, ts, objectClass, isSetting, {}};
    if (!info.simple || !addWritten(set, use)) {
        set.parts.clear();
        for (const ObjectUse &object : info.objects)
            set.addObject(object);
        if (info.extensible)
            set.addMarker();
    }
    return operatorSub(ts, SUB_UNION, set.parts);
}

/* The governor's node takes the set as its constraint. A type that is a set checks what its governor
   asks for, too; the set in a field has its elements alone. */
void fillValueSet(Emitter &e, TreeState &ts, RecNr nr, SetUse set, TypeUse governor, bool isType) {
    fillType(e, ts, {nr, governor, nullptr, nullptr, {}, {}});
    ts.tree().t(nr).nodeFlags |= NODE_SET;
    if (set.set->extensible)
        addNote(e, ts, "only the values of the first version stand in the set");
    const ExpressionContext context{ExpressionContext::Values, placeOfNode(ts, nr), governor,
                                    nullptr, !isType};
    const RecNr elements = emitSpec(e, ts, *set.set, set.scope, context);
    if (elements == 0)
        return;
    std::vector<RecNr> parts{elements};
    if (isType) {
        if (const RecNr own = ts.tree().t(nr).constraintRec; own != 0)
            parts.push_back(own);
        else
            for (const RecNr part : emitInheritedValues(e, ts, nr, governor))
                parts.push_back(part);
    }
    const RecNr root =
        parts.size() == 1 ? elements : operatorSub(ts, SUB_INTERSECTION, parts);
    ts.tree().t(nr).constraintRec = root;
}

} // namespace

void emitSetDefinition(Emitter &e, TreeState &ts, RecNr nr, const Assignment &assignment) {
    const Scope *scope = &moduleOf(e.c, &assignment)->root;
    const TypeUse governor{assignment.type, scope};
    const SetUse set = setOfDefinition(e.c, &assignment, scope);
    const ClassUse objectClass = classOf(e.c, governor);
    if (!set)
        return refuse(e, assignment.name.place, "a tree can't hold this set");
    if (!objectClass)
        return fillValueSet(e, ts, nr, set, governor, true);
    referToClass(e, ts, nr, governor);
    ts.tree().t(nr).nodeFlags |= NODE_SET;
    const RecNr elements = emitObjectSet(e, ts, set, objectClass, false);
    ts.tree().t(nr).constraintRec = elements;
}

RecNr hiddenSet(Emitter &e, TreeState &ts, SetUse set, TypeUse governor, bool ofObjects) {
    const RecNr nr = newType(ts, TCS_MANDATORY, 1, lineOf(e, set.set->place));
    ts.tree().t(nr).skipInWalk = 1;
    if (!ofObjects) {
        fillValueSet(e, ts, nr, set, governor, false);
        return nr;
    }
    referToClass(e, ts, nr, governor);
    ts.tree().t(nr).nodeFlags |= NODE_SET;
    const RecNr elements = emitObjectSet(e, ts, set, classOf(e.c, governor), true);
    ts.tree().t(nr).constraintRec = elements;
    return nr;
}

} // namespace asntree
