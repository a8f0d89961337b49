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

/* &Type, or &object.&Type: from field to field of the class, and of those that objects have. */
void checkFieldPath(Compilation &c, ClassUse use, const ClassField &field) {
    for (std::size_t i = 0; i < field.path.size(); ++i) {
        const ClassField *next = findField(use, field.path[i].text, field.pathIsUpper[i]);
        if (next == nullptr) {
            error(c.diagnostics, field.path[i].place,
                  "the class has no field " + quoted(field.path[i]),
                  {{use.objectClass->place, "the class"}});
            return;
        }
        if (i + 1 == field.path.size())
            return;
        use = classOf(c, governorOf(use, *next));
        if (!use) {
            error(c.diagnostics, field.path[i].place,
                  quoted(field.path[i]) + " holds no object, so no field can follow");
            return;
        }
    }
}

void checkSetting(Compilation &c, const Setting &setting);

void checkField(Compilation &c, ClassUse use, const ClassField &field) {
    const FieldKind kind = fieldKind(c, use, field);
    if (kind == FieldKind::FixedValue || kind == FieldKind::FixedSet)
        checkType(c, governorOf(use, field));
    if (kind == FieldKind::Object && field.unique)
        error(c.diagnostics, field.place, "only a value of a fixed type can be UNIQUE, no object");
    checkFieldPath(c, use, field);
    if (field.defaultSetting.given())
        checkSetting(c, defaultSetting(c, use, field));
}

struct SyntaxCheck {
    Compilation &c;
    const ObjectClass &objectClass;
    std::unordered_map<std::string_view, bool> seen; /* by field: does it stand outside groups */
    bool sound = true;
};

/* What is left out must be told from what comes behind it by the first word; and a group that sets
   nothing would say what no object keeps. */
void checkGroup(SyntaxCheck &check, const std::vector<SyntaxItem> &items, std::size_t at) {
    const std::vector<SyntaxItem> &group = items[at].group;
    const auto says = [](const SyntaxItem &item) { return item.kind != SyntaxItem::Literal; };
    if (std::none_of(group.begin(), group.end(), says))
        error(check.c.diagnostics, items[at].text.place,
              "an optional group of WITH SYNTAX holds a field at least");
    const SyntaxItem &first = group.front();
    for (std::size_t i = at + 1; i < items.size() && first.kind == SyntaxItem::Literal; ++i) {
        const SyntaxItem &next =
            items[i].kind == SyntaxItem::Group ? items[i].group.front() : items[i];
        if (next.kind == SyntaxItem::Literal && next.text.text == first.text.text)
            error(check.c.diagnostics, next.text.place,
                  "\"" + std::string(first.text.text) +
                      "\" begins an optional group in front already, so that none could tell which "
                      "of them is left out",
                  {{first.text.place, "the other one"}});
        if (items[i].kind != SyntaxItem::Group)
            break;
    }
}

void checkSyntaxItems(SyntaxCheck &check, const std::vector<SyntaxItem> &items, bool optional) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        const SyntaxItem &item = items[i];
        if (item.kind == SyntaxItem::Group) {
            checkGroup(check, items, i);
            checkSyntaxItems(check, item.group, true);
            continue;
        }
        if (item.kind != SyntaxItem::Field)
            continue;
        const auto &fields = check.objectClass.fields;
        const bool known = std::any_of(fields.begin(), fields.end(), [&](const ClassField &field) {
            return field.name.text == item.text.text;
        });
        check.sound = check.sound && known;
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
        if (!needed || !check.sound)
            continue;
        if (found == check.seen.end())
            error(c.diagnostics, field.place,
                  "WITH SYNTAX has no place for " + quoted(field.name) +
                      ", which every object must set");
        else if (!found->second)
            slip(c.diagnostics, field.place,
                 quoted(field.name) + " stands in an optional group of WITH SYNTAX, but is neither "
                                      "OPTIONAL nor has a DEFAULT");
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
    text.append(datum.isTrue ? "T:" : ":").append(datum.text);
    text.append(":").append(textOf(datum.real.mantissa)).append("^");
    text.append(std::to_string(datum.real.exponent + datum.real.special));
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

/* A value of variable type needs its type: it can't be without the field that holds it. */
void checkHasType(Compilation &c, const ObjectInfo &object, const Setting &value) {
    if (value.field->path.size() != 1)
        return;
    const Name &name = value.field->path.front();
    for (const Setting &type : object.settings)
        if (type.kind == FieldKind::Type && type.field->name.text == name.text && !type.given &&
            !type.byDefault)
            error(c.diagnostics, value.place,
                  quoted(value.field->name) + " can't be set without " + quoted(name) +
                      ", which is its type");
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
    for (const Setting &setting : info.settings) {
        if (!setting.given)
            continue;
        checkSetting(c, setting);
        checkHasType(c, info, setting);
    }
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
