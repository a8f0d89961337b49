#include <algorithm>
#include <unordered_map>

#include "asntree/check.h"
#include "asntree/constraints.h"

/* Classes, objects and sets. */

namespace asntree {

namespace {

std::string quoted(const Name &name) {
    return "`&" + std::string(name.text) + "`";
}

void checkFieldNames(Compilation &c, const ObjectClass &objectClass) {
    std::unordered_map<std::string_view, const ClassField *> names;
    for (const ClassField &field : objectClass.fields) {
        auto [place, isNew] = names.emplace(field.name.text, &field);
        if (!isNew)
            error(c.diagnostics, field.place, "field " + quoted(field.name) + " stands twice",
                  {{place->second->place, "first here"}});
    }
}

void checkField(Compilation &c, ClassUse use, const ClassField &field) {
    const FieldKind kind = fieldKind(c, use, field);
    if (kind == FieldKind::FixedValue || kind == FieldKind::FixedSet)
        checkType(c, governorOf(use, field));
    for (std::size_t i = 0; i < field.path.size() && i < 1; ++i)
        if (findField(use, field.path[i].text, field.pathIsUpper[i]) == nullptr)
            error(c.diagnostics, field.path[i].place,
                  "the class has no field " + quoted(field.path[i]));
}

struct SyntaxCheck {
    Compilation &c;
    const ObjectClass &objectClass;
    std::unordered_map<std::string_view, bool> seen; /* by field: does it stand outside groups */
};

void checkSyntaxItems(SyntaxCheck &check, const std::vector<SyntaxItem> &items, bool optional) {
    for (const SyntaxItem &item : items) {
        if (item.kind == SyntaxItem::Group) {
            checkSyntaxItems(check, item.group, true);
            continue;
        }
        if (item.kind != SyntaxItem::Field)
            continue;
        const auto &fields = check.objectClass.fields;
        const bool known = std::any_of(fields.begin(), fields.end(), [&](const ClassField &field) {
            return field.name.text == item.text.text;
        });
        if (!known)
            error(check.c.diagnostics, item.text.place,
                  "WITH SYNTAX names " + quoted(item.text) + ", which is no field of the class");
        else if (!check.seen.emplace(item.text.text, !optional).second)
            error(check.c.diagnostics, item.text.place,
                  quoted(item.text) + " stands twice in WITH SYNTAX");
    }
}

void checkSyntax(Compilation &c, const ObjectClass &objectClass) {
    SyntaxCheck check{c, objectClass, {}};
    checkSyntaxItems(check, objectClass.syntax, false);
    for (const ClassField &field : objectClass.fields) {
        auto found = check.seen.find(field.name.text);
        const bool needed = !field.optional && !field.defaultSetting.given();
        if (needed && found == check.seen.end())
            error(c.diagnostics, field.place,
                  "WITH SYNTAX has no place for " + quoted(field.name) +
                      ", which every object must set");
    }
}

void checkSetting(Compilation &c, const Setting &setting) {
    switch (setting.kind) {
    case FieldKind::Type:
        if (setting.type.type != nullptr && !classOf(c, setting.type))
            checkType(c, setting.type);
        break;
    case FieldKind::FixedValue:
    case FieldKind::VariableValue:
        if (setting.value && baseOf(c, setting.governor))
            checkValue(c, setting.value, setting.governor);
        break;
    case FieldKind::FixedSet:
    case FieldKind::VariableSet:
        if (setting.set && baseOf(c, setting.governor))
            checkSetElements(c, setting.set, setting.governor);
        break;
    case FieldKind::Object: {
        const ClassUse objectClass = classOf(c, setting.governor);
        const ObjectUse object = objectOf(c, setting.value, objectClass);
        if (object && object.value == setting.value.value)
            checkObject(c, object);
        break;
    }
    case FieldKind::ObjectSet:
        if (setting.set)
            checkObjectSet(c, setting.set, classOf(c, setting.governor));
        break;
    }
}

/* What makes two values of a UNIQUE field the same. */
std::string identityOf(const Datum &datum) {
    std::string text = std::to_string(static_cast<int>(datum.kind)) + ':' + textOf(datum.number);
    text.append(":").append(datum.text);
    for (const Number &arc : datum.identifier)
        text.append(".").append(textOf(arc));
    for (char32_t character : datum.characters)
        text.append(",").append(std::to_string(static_cast<std::uint32_t>(character)));
    for (const DatumMember &member : datum.members) {
        if (member.component != nullptr)
            text.append(" ").append(member.component->name.text);
        text.append("(").append(member.value != nullptr ? identityOf(*member.value) : "");
        text.append(")");
    }
    return text;
}

void checkUnique(Compilation &c, const ClassField &field, const ObjectSetInfo &set, Place place) {
    std::unordered_map<std::string, Place> known;
    for (const ObjectUse &object : set.objects) {
        for (const Setting &setting : readObject(c, object).settings) {
            if (setting.field != &field || !setting.given || !baseOf(c, setting.governor))
                continue;
            const Datum *datum = readDatum(c, setting.value, setting.governor);
            if (datum->kind == DatumKind::Bad)
                continue;
            auto [first, isNew] = known.emplace(identityOf(*datum), setting.place);
            if (!isNew)
                error(c.diagnostics, place,
                      "two objects of the set have the same value in the UNIQUE field " +
                          quoted(field.name),
                      {{first->second, "the first one"}, {setting.place, "the second one"}});
        }
    }
}

void checkInlineObjects(Compilation &c, const ObjectSetInfo &set) {
    for (const ObjectUse &object : set.objects)
        if (object.definition == nullptr)
            checkObject(c, object);
}

} // namespace

void checkClass(Compilation &c, ClassUse use) {
    checkFieldNames(c, *use.objectClass);
    for (const ClassField &field : use.objectClass->fields)
        checkField(c, use, field);
    if (use.objectClass->hasSyntax)
        checkSyntax(c, *use.objectClass);
}

void checkObject(Compilation &c, const ObjectUse &use) {
    if (!c.checkedUses.insert({use.value, use.scope}).second)
        return;
    DepthGuard guard(c);
    if (!guard.ok)
        return;
    const ObjectInfo &info = readObject(c, use);
    for (const Setting &setting : info.settings)
        if (setting.given)
            checkSetting(c, setting);
}

void checkObjectSet(Compilation &c, SetUse use, ClassUse objectClass) {
    if (!objectClass || !c.checkedUses.insert({use.set, use.scope}).second)
        return;
    DepthGuard guard(c);
    if (!guard.ok)
        return;
    const ObjectSetInfo &set = readObjectSet(c, use, objectClass);
    checkInlineObjects(c, set);
    for (const ClassField &field : objectClass.objectClass->fields)
        if (field.unique && set.sound)
            checkUnique(c, field, set, use.set->place);
}

} // namespace asntree
