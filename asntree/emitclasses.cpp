#include "asntree/emitter.h"

#include "asntree/classes.h"
#include "asntree/references.h"

/* Classes and their fields. */

namespace asntree {

namespace {

bool isOptional(const ClassField &field) {
    return field.optional || field.defaultSetting.given();
}

void setClassFacts(TreeState &ts, RecNr nr, const ObjectClass &objectClass, RecNr firstField) {
    int flags = 0;
    for (const ClassField &field : objectClass.fields)
        flags |= isOptional(field) ? TYPE_HAS_OPTIONAL : TYPE_HAS_MANDATORY;
    TNode &node = ts.tree().t(nr);
    node.mainType = TYP_CLASS;
    node.refRecord = objectClass.fields.empty() ? 0 : firstField;
    node.nrOfComps = static_cast<std::int16_t>(objectClass.fields.size());
    node.typeFlags = static_cast<std::uint16_t>(flags);
}

/* The records of all fields, one behind the other, in the list of a class. */
RecNr newFields(Emitter &e, TreeState &ts, RecNr parent, const ObjectClass &objectClass) {
    const RecNr first = static_cast<RecNr>(ts.tree().tNodes.size()) + 1;
    for (std::size_t i = 0; i < objectClass.fields.size(); ++i) {
        const ClassField &field = objectClass.fields[i];
        const RecNr nr = newType(ts, isOptional(field) ? TCS_OPTIONAL : TCS_MANDATORY, parent,
                                 lineOf(e, field.place));
        TNode &node = ts.tree().t(nr);
        node.nameIdx = nameNr(ts, field.name.text);
        node.next = i + 1 < objectClass.fields.size() ? nr + 1 : 0;
    }
    nameMembers(e, ts, objectClass.fields.empty() ? 0 : first, "F");
    return first;
}

/* `&value &Type`: the class itself, and the steps to the type field. */
void fillVariableType(Emitter &e, TreeState &ts, RecNr nr, RecNr classNr, ClassUse objectClass,
                      const ClassField &field) {
    const ClassField *target = field.path.empty() ? nullptr
                                                  : findField(objectClass, field.path.front().text,
                                                              field.pathIsUpper.front());
    TNode &node = ts.tree().t(nr);
    node.mainType = TYP_FIELDLIST;
    node.nodeFlags |= NODE_VARIABLE_TYPE_FIELD;
    node.refRecord = classNr;
    if (target == nullptr)
        return;
    const NodeReference first = fieldNode(e, ts, objectClass, *target);
    const RecNr step = ts.tree().addS({moduleNumber(e, ts, first.tree), first.nr, 0});
    ts.tree().t(nr).auxRecord = step;
}

/* DEFAULT of a field. */
RecNr defaultOf(Emitter &e, TreeState &ts, RecNr nr, ClassUse objectClass,
                const ClassField &field) {
    const Setting setting = defaultSetting(e.c, objectClass, field);
    const auto placeholder = [&](RecNr type) {
        VNode node;
        node.valueKind = TYP_NONE;
        node.compStatus = VCS_DEFINITION;
        node.governorModule = 1;
        node.governorRec = nr;
        node.refModule = 1;
        node.refRecord = type;
        return ts.tree().addV(node);
    };
    switch (setting.kind) {
    case FieldKind::Type:
        return placeholder(hiddenType(e, ts, setting.type, nullptr, TCS_MANDATORY));
    case FieldKind::FixedValue:
        return emitValue(e, ts, setting.value, setting.governor, placeOfNode(ts, nr),
                         VCS_DEFINITION);
    case FieldKind::FixedSet:
    case FieldKind::ObjectSet:
        return placeholder(hiddenSet(e, ts, setting.set, setting.governor,
                                     setting.kind == FieldKind::ObjectSet));
    case FieldKind::Object: {
        const RecNr value = emitObjectReference(e, ts, setting.value,
                                                classOf(e.c, setting.governor), VCS_DEFINITION);
        if (value != 0)
            governBy(e, ts, value, placeOfNode(ts, nr));
        return value;
    }
    case FieldKind::VariableValue:
    case FieldKind::VariableSet:
        break; /* another field tells the type */
    }
    return 0;
}

void fillField(Emitter &e, TreeState &ts, RecNr nr, RecNr classNr, ClassUse objectClass,
               const ClassField &field) {
    const TypeUse governor = governorOf(objectClass, field);
    const FieldKind kind = fieldKind(e.c, objectClass, field);
    switch (kind) {
    case FieldKind::Type:
        ts.tree().t(nr).mainType = TYP_OPEN;
        ts.tree().t(nr).valueFieldCode = VF_OPEN;
        break;
    case FieldKind::FixedSet:
        ts.tree().t(nr).nodeFlags |= NODE_SET;
        fillType(e, ts, {nr, governor, nullptr, &field, {}, "F"});
        break;
    case FieldKind::FixedValue:
        ts.tree().t(nr).nameIdx = -ts.tree().t(nr).nameIdx;
        fillType(e, ts, {nr, governor, nullptr, &field, {}, "F"});
        break;
    case FieldKind::VariableValue:
        ts.tree().t(nr).nameIdx = -ts.tree().t(nr).nameIdx;
        fillVariableType(e, ts, nr, classNr, objectClass, field);
        break;
    case FieldKind::VariableSet:
        ts.tree().t(nr).nodeFlags |= NODE_SET;
        fillVariableType(e, ts, nr, classNr, objectClass, field);
        break;
    case FieldKind::ObjectSet:
        ts.tree().t(nr).nodeFlags |= NODE_SET;
        referToClass(e, ts, nr, governor);
        break;
    case FieldKind::Object:
        referToClass(e, ts, nr, governor);
        break;
    }
    if (field.defaultSetting.given()) {
        const RecNr value = defaultOf(e, ts, nr, objectClass, field);
        ts.tree().t(nr).defaultValue = value;
    }
    if (kind != FieldKind::FixedSet && kind != FieldKind::FixedValue) /* whose types have them */
        applyWords(e, ts, {nr, governor, nullptr, &field, {}, "F"});
}

void fillFields(Emitter &e, TreeState &ts, RecNr classNr, RecNr first, ClassUse objectClass) {
    RecNr nr = first;
    for (const ClassField &field : objectClass.objectClass->fields)
        fillField(e, ts, nr++, classNr, objectClass, field);
}

} // namespace

namespace {

/* The hidden open type that a field of a predefined class is. */
RecNr newOpenNode(TreeState &ts) {
    const RecNr nr = newType(ts, TCS_HEADER, 1, 0);
    TNode &node = ts.tree().t(nr);
    node.mainType = TYP_OPEN;
    node.valueFieldCode = VF_OPEN;
    node.skipInWalk = 1;
    return nr;
}

} // namespace

bool isPredefinedClass(const ClassUse &objectClass) {
    return objectClass && objectClass.scope->module->predefined;
}

/* Fields stand right behind the definitions, so that paths to them are known from the start. */
void allocateFields(Emitter &e, TreeState &ts) {
    for (const Assignment *assignment : ts.plan->definitions) {
        auto found = e.types.find(assignment);
        if (assignment->kind != AssignmentKind::Class || assignment->parameterized ||
            found == e.types.end())
            continue;
        const RecNr first = newFields(e, ts, found->second.nr, *assignment->objectClass);
        e.classFields.emplace(assignment->objectClass, DefinitionPlace{ts.number, first});
    }
}

namespace {

void fillPredefinedClass(TreeState &ts, RecNr nr, const ClassUse &objectClass) {
    TNode &node = ts.tree().t(nr);
    node.mainType = objectClass.definition != nullptr &&
                            objectClass.definition->name.text == "ABSTRACT-SYNTAX"
                        ? TYP_ABSTR_STX
                        : TYP_TYPE_ID;
}

/* Another name of a class; of a predefined one it is that class itself. */
void fillAlias(Emitter &e, TreeState &ts, RecNr nr, TypeUse use) {
    const Target target = resolve(e.c, use.type->ref, use.scope);
    const ClassUse objectClass = classOf(e.c, use);
    if (isPredefinedClass(objectClass) && target.assignment == objectClass.definition)
        return fillPredefinedClass(ts, nr, objectClass);
    referToClass(e, ts, nr, use);
}

} // namespace

void emitClassDefinition(Emitter &e, TreeState &ts, RecNr nr, const Assignment &assignment) {
    const Scope *scope = &moduleOf(e.c, &assignment)->root;
    if (assignment.kind != AssignmentKind::Class)
        return fillAlias(e, ts, nr, {assignment.type, scope});
    const RecNr first = e.classFields.at(assignment.objectClass).nr;
    setClassFacts(ts, nr, *assignment.objectClass, first);
    fillFields(e, ts, nr, first, {assignment.objectClass, scope, &assignment});
    applyWords(e, ts, {nr, {}, nullptr, &assignment, {}, {}});
}

void referToClass(Emitter &e, TreeState &ts, RecNr nr, TypeUse use) {
    if (use.type->kind == TypeKind::Reference) {
        const Target target = resolve(e.c, use.type->ref, use.scope);
        if (target.assignment != nullptr && target.scope->definition == nullptr &&
            e.types.contains(target.assignment)) {
            referTo(e, ts, nr, target.assignment);
            return;
        }
    }
    const ClassUse objectClass = classOf(e.c, use);
    if (!objectClass)
        return refuse(e, use.type->place, "a class is left out that it refers to");
    const NodeReference node = classNode(e, ts, objectClass);
    const std::int32_t module = moduleNumber(e, ts, node.tree);
    TNode &rec = ts.tree().t(nr);
    rec.mainType = TYP_SYNONYM;
    rec.refModule = module;
    rec.refRecord = node.nr;
}

/* A class without a definition in the trees: a predefined one, or an instance. */
NodeReference classNode(Emitter &e, TreeState &ts, ClassUse objectClass) {
    if (auto found = e.types.find(objectClass.definition);
        found != e.types.end() && objectClass.scope->definition == nullptr)
        return {found->second.tree, found->second.nr};
    const bool isPredefined = isPredefinedClass(objectClass);
    RecNr &nr = isPredefined ? ts.predefinedClasses[objectClass.definition]
                             : ts.instanceClasses[objectClass.scope];
    if (nr != 0)
        return {ts.number, nr};
    const RecNr made = newType(ts, isPredefined ? TCS_HEADER : TCS_PARAM_HEAD, isPredefined ? 1 : 0,
                               lineOf(e, objectClass.definition->name.place));
    nr = made;
    if (isPredefined) {
        ts.tree().t(made).skipInWalk = 1;
        fillPredefinedClass(ts, made, objectClass);
        return {ts.number, made};
    }
    ts.tree().t(made).nameIdx = nameNr(ts, objectClass.definition->name.text);
    const RecNr first = newFields(e, ts, made, *objectClass.objectClass);
    setClassFacts(ts, made, *objectClass.objectClass, first);
    fillFields(e, ts, made, first, objectClass);
    return {ts.number, made};
}

NodeReference fieldNode(Emitter &e, TreeState &ts, ClassUse objectClass, const ClassField &field) {
    const auto index = static_cast<RecNr>(&field - objectClass.objectClass->fields.data());
    if (isPredefinedClass(objectClass))
        return {ts.number, field.upper ? newOpenNode(ts) : plainIdentifier(ts)};
    if (objectClass.scope->definition == nullptr)
        if (auto found = e.classFields.find(objectClass.objectClass); found != e.classFields.end())
            return {found->second.tree, found->second.nr + index};
    const NodeReference node = classNode(e, ts, objectClass);
    return {node.tree, e.trees[node.tree].tree().t(node.nr).refRecord + index};
}

/* CLASS.&Type and CLASS.&value of variable type. */
void fillOpenField(Emitter &e, TreeState &ts, RecNr nr, TypeUse use) {
    const FieldTarget target = fieldTarget(e.c, use);
    ts.tree().t(nr).mainType = TYP_FIELDLIST;
    if (!target)
        return refuse(e, use.type->place, "a tree can't hold this type from an object");
    if (isPredefinedClass(target.objectClass)) {
        const std::int32_t module = predefinedModule(ts);
        const auto field =
            static_cast<RecNr>(target.last() - target.lastClass.objectClass->fields.data());
        const RecNr open = newOpenNode(ts);
        const RecNr step = ts.tree().addS({module, field + 1, 0});
        ts.tree().t(nr).refRecord = open;
        ts.tree().t(nr).auxRecord = step;
        return;
    }
    const NodeReference node = classNode(e, ts, target.objectClass);
    const std::int32_t module = moduleNumber(e, ts, node.tree);
    ts.tree().t(nr).refModule = module == 1 ? 0 : module;
    ts.tree().t(nr).refRecord = node.nr;
    ClassUse objectClass = target.objectClass;
    RecNr last = 0;
    for (const ClassField *field : target.path) {
        const NodeReference step = fieldNode(e, ts, objectClass, *field);
        const RecNr sNode = ts.tree().addS({moduleNumber(e, ts, step.tree), step.nr, 0});
        (last == 0 ? ts.tree().t(nr).auxRecord
                   : ts.tree().sNodes[static_cast<std::size_t>(last - 1)].next) = sNode;
        last = sNode;
        if (field != target.last())
            objectClass = classOf(e.c, governorOf(objectClass, *field));
    }
}

} // namespace asntree
