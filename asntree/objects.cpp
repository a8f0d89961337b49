#include "asntree/objects.h"

#include <algorithm>
#include <tuple>

/* One object, read by its class: which settings it has, and what governs them. */

namespace asntree {

namespace {

std::string quoted(const Name &name) {
    return "`&" + std::string(name.text) + "`";
}

/* What the parser asks of the class while it cuts settings. */
struct KindQuestion {
    Compilation *c;
    ClassUse objectClass;
};

SettingKind settingKind(void *state, std::string_view name) {
    const KindQuestion &question = *static_cast<KindQuestion *>(state);
    for (const ClassField &field : question.objectClass.objectClass->fields) {
        if (field.name.text != name)
            continue;
        switch (fieldKind(*question.c, question.objectClass, field)) {
        case FieldKind::Type:
            return SettingKind::Type;
        case FieldKind::FixedValue:
        case FieldKind::VariableValue:
            return SettingKind::Value;
        case FieldKind::FixedSet:
        case FieldKind::VariableSet:
            return SettingKind::Set;
        case FieldKind::Object:
            return SettingKind::Object;
        case FieldKind::ObjectSet:
            return SettingKind::ObjectSet;
        }
    }
    return SettingKind::Value;
}

/* Reads the tokens of a setting by the kind of its field. `scope` is that of the tokens. */
void readSetting(Compilation &c, Setting &setting, TokenRange tokens, const Scope *scope) {
    ParseContext parsing = c.parsing();
    switch (setting.kind) {
    case FieldKind::Type:
        setting.type = {readType(parsing, tokens), scope};
        break;
    case FieldKind::FixedValue:
    case FieldKind::VariableValue:
    case FieldKind::Object:
        setting.value = {readValue(parsing, tokens), scope};
        break;
    case FieldKind::FixedSet:
    case FieldKind::VariableSet:
    case FieldKind::ObjectSet:
        setting.set = {readBracedSet(parsing, tokens), scope};
        break;
    }
}

Setting *findSetting(ObjectInfo &info, std::string_view name, bool upper) {
    for (Setting &setting : info.settings)
        if (setting.field->name.text == name && setting.field->upper == upper)
            return &setting;
    return nullptr;
}

/* What a field of variable type is governed by in this object: &Type, or &object.&Type. */
TypeUse variableGovernor(Compilation &c, ObjectInfo &info, const ClassField &field) {
    ObjectInfo *holder = &info;
    for (std::size_t i = 0; i < field.path.size(); ++i) {
        Setting *setting = findSetting(*holder, field.path[i].text, field.pathIsUpper[i]);
        if (setting == nullptr || (!setting->given && !setting->byDefault))
            return {};
        if (i + 1 == field.path.size())
            return setting->kind == FieldKind::Type ? setting->type : setting->governor;
        if (setting->kind != FieldKind::Object)
            return {};
        const ClassUse next = classOf(c, governorOf(holder->use.objectClass, *setting->field));
        const ObjectUse inner = objectOf(c, setting->value, next);
        if (!inner)
            return {};
        holder = const_cast<ObjectInfo *>(&readObject(c, inner));
    }
    return {};
}

void settleGovernors(Compilation &c, ObjectInfo &info) {
    for (Setting &setting : info.settings)
        if (setting.kind != FieldKind::VariableValue && setting.kind != FieldKind::VariableSet)
            setting.governor = governorOf(info.use.objectClass, *setting.field);
    for (Setting &setting : info.settings)
        if (setting.kind == FieldKind::VariableValue || setting.kind == FieldKind::VariableSet)
            setting.governor = variableGovernor(c, info, *setting.field);
}

/* `object.&field` of an object that is a parameter: what that leaves out is left out here too. */
bool isLeftOutByArgument(Compilation &c, const Setting &setting) {
    const auto gives = [&c](const auto &node, const Scope *scope) {
        const Target target = tryResolve(c, node.ref, scope);
        return target.argument == nullptr || target.argument->kind != ArgumentKind::Object ||
               !settingsOf(c, node.ref, node.fields, node.fieldIsUpper, scope).empty();
    };
    if (!setting.field->optional)
        return false;
    if (setting.type && setting.type.type->kind == TypeKind::Field)
        return !gives(*setting.type.type, setting.type.scope);
    return setting.value && setting.value.value->kind == ValueKind::Field &&
           !gives(*setting.value.value, setting.value.scope);
}

void takeSettings(Compilation &c, ObjectInfo &info, const std::vector<FieldSetting> &written) {
    for (const FieldSetting &part : written) {
        Setting *setting = findSetting(info, part.field.text, part.upper);
        if (setting == nullptr) {
            error(c.diagnostics, part.place, "the class has no field " + quoted(part.field),
                  {{info.use.objectClass.objectClass->place, "the class"}});
            info.sound = false;
        } else if (setting->given) {
            error(c.diagnostics, part.place, quoted(part.field) + " is set twice",
                  {{setting->place, "first set here"}});
            info.sound = false;
        } else {
            setting->given = true;
            setting->place = part.place;
            readSetting(c, *setting, part.tokens, info.use.scope);
            setting->given = !isLeftOutByArgument(c, *setting);
        }
    }
}

void takeDefaults(Compilation &c, ObjectInfo &info) {
    for (Setting &setting : info.settings) {
        if (setting.given)
            continue;
        if (setting.field->defaultSetting.given()) {
            setting.byDefault = true;
            setting.place = info.use.value->place;
            readSetting(c, setting, setting.field->defaultSetting, info.use.objectClass.scope);
        } else if (!setting.field->optional && info.sound) {
            error(c.diagnostics, info.use.value->place,
                  "the object doesn't set " + quoted(setting.field->name) +
                      ", which is neither OPTIONAL nor has a DEFAULT",
                  {{setting.field->place, "the field"}});
            info.sound = false;
        }
    }
}

void fillObject(Compilation &c, ObjectInfo &info) {
    for (const ClassField &field : info.use.objectClass.objectClass->fields) {
        Setting setting;
        setting.field = &field;
        setting.kind = fieldKind(c, info.use.objectClass, field);
        info.settings.push_back(setting);
    }
    KindQuestion question{&c, info.use.objectClass};
    ParseContext parsing = c.parsing();
    info.sound = true;
    const std::vector<FieldSetting> written =
        readObject(parsing, info.use.value->tokens, *info.use.objectClass.objectClass,
                   {&question, settingKind}, info.sound);
    takeSettings(c, info, written);
    takeDefaults(c, info);
    settleGovernors(c, info);
}

bool sameClass(ClassUse a, ClassUse b) {
    return a.objectClass == b.objectClass;
}

/* From a reference to an object to what it names: `found.value`, and `found.definition` if that is
   a definition. Empty after a message. */
ObjectUse behindReference(Compilation &c, const ObjectUse &use) {
    const Reference &reference = use.value->ref;
    const Target target = resolve(c, reference, use.scope);
    if (!target)
        return {};
    if (target.argument != nullptr && target.argument->kind == ArgumentKind::Object)
        return {target.argument->value, target.argument->scope, use.objectClass, nullptr};
    const Assignment *assignment = target.assignment;
    const ClassUse own = assignment != nullptr && assignment->kind == AssignmentKind::Value
                             ? classOf(c, {assignment->type, target.scope})
                             : ClassUse{};
    if (!own) {
        error(c.diagnostics, reference.name.place,
              "`" + std::string(reference.name.text) + "` is no object");
        return {};
    }
    if (use.objectClass && !sameClass(own, use.objectClass)) {
        error(c.diagnostics, reference.name.place,
              "`" + std::string(reference.name.text) + "` is an object of another class",
              {{assignment->name.place, "defined here"}});
        return {};
    }
    return {assignment->value, target.scope, own, assignment};
}

/* Of all references of a circle the first one in the text is told, so that it is told once. */
void reportCircle(Compilation &c, ObjectUse use) {
    Place first = use.value->place;
    for (const Value *start = use.value;;) {
        use = behindReference(c, use);
        if (!use || use.value == start)
            break;
        first = std::min(first, use.value->place, [](const Place &a, const Place &b) {
            return std::tie(a.file, a.offset) < std::tie(b.file, b.offset);
        });
    }
    error(c.diagnostics, first, "the object is defined by itself, in a circle");
}

ObjectUse objectOfField(Compilation &c, ValueUse use, ClassUse objectClass) {
    const Value &value = *use.value;
    for (const Setting &setting :
         settingsOf(c, value.ref, value.fields, value.fieldIsUpper, use.scope))
        if (setting.kind == FieldKind::Object)
            return objectOf(c, setting.value, objectClass);
    if (tryResolve(c, value.ref, use.scope)) /* else reported, or a parameter of nothing yet */
        error(c.diagnostics, value.place, "the field path leads to no object");
    return {};
}

} // namespace

ObjectUse objectOf(Compilation &c, ValueUse use, ClassUse objectClass) {
    DepthGuard guard(c);
    if (!use || !guard.ok)
        return {};
    ObjectUse object{use.value, use.scope, objectClass, nullptr};
    std::unordered_set<UseKey, UseHash> passed;
    while (object && object.value->kind == ValueKind::Reference) {
        if (!passed.insert({object.value, object.scope}).second) {
            reportCircle(c, object);
            return {};
        }
        object = behindReference(c, object);
    }
    if (!object)
        return {};
    switch (object.value->kind) {
    case ValueKind::Braced:
    case ValueKind::Object:
        return object;
    case ValueKind::Field:
        return objectOfField(c, {object.value, object.scope}, object.objectClass);
    default:
        error(c.diagnostics, object.value->place, "an object is expected here, not a value");
        return {};
    }
}

Setting defaultSetting(Compilation &c, ClassUse objectClass, const ClassField &field) {
    Setting setting;
    setting.field = &field;
    setting.kind = fieldKind(c, objectClass, field);
    setting.byDefault = true;
    setting.place = field.place;
    setting.governor = governorOf(objectClass, field);
    readSetting(c, setting, field.defaultSetting, objectClass.scope);
    return setting;
}

const ObjectInfo &readObject(Compilation &c, const ObjectUse &use) {
    ObjectInfo *&known = c.objectsOfValues[{use.value, use.scope}];
    if (known != nullptr)
        return *known;
    c.objects.push_back({use, {}, false});
    known = &c.objects.back();
    ObjectInfo &info = *known; /* `known` may move while the object is read */
    if (use && use.objectClass)
        fillObject(c, info);
    return info;
}

} // namespace asntree
