#include "show/show.h"

#include "model/constraints.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/valuequeries.h"
#include "objects/fieldvalues.h"
#include "objects/objectsets.h"
#include "show/references.h"
#include "show/texts.h"
#include "show/writer.h"
#include "store/records.h"

namespace {

int depth = 0;

Text className(AsnObjClass *objClass) {
    const Text name = getBaseObjClassRef(objClass);
    return name.empty() ? "CLASS {...}" : name;
}

/* The elements of a set are those of its constraints; one has no need for parentheses. */
Text setText(AsnType *set) {
    Text text = constraintsText(set, true);
    if (getNrOfLocalTypeConstraints(set) == 1 && text.size() > 2)
        text = text.substr(1, text.size() - 2);
    return "{" + text + "}";
}

/* Fields of classes */

/* The field that names the type of a value field, by its path. */
Text variableTypeText(const AsnObjClassField *field) {
    return field->base.auxRecord == 0 ? "a type of another field"
                                      : "&" + pathEndName(field->posModule, field->base.auxRecord);
}

Text fieldGovernorText(AsnObjClassField *field) {
    Text text;
    const auto addType = [&](AsnObjClassField *, AsnType *type) { text = typeInShort(type); };
    const auto addClass = [&](AsnObjClassField *, AsnObjClass *governor) {
        text = className(governor);
    };
    forFixedTypeValueField(field, addType);
    forFixedTypeValueSetField(field, addType);
    forObjectField(field, addClass);
    forObjectSetField(field, addClass);
    if (isVariableTypeValueField(field) || isVariableTypeValueSetField(field))
        text = variableTypeText(field);
    return text.empty() ? text : " " + text;
}

Text fieldPresenceText(AsnObjClassField *field) {
    if (!isDefaultFieldValue(field))
        return isOptionalField(field) ? " OPTIONAL" : "";
    Text text = "record " + std::to_string(field->base.defaultValue);
    if (isFixedTypeValueField(field))
        if (const auto value = newValueByNumber(field->posModule, field->base.defaultValue))
            text = valueText(value.get());
    return " DEFAULT " + text;
}

Text fieldName(AsnObjClassField *field) {
    const Text name = getRefOf(field);
    return name.starts_with('&') ? name : "&" + name;
}

/* Settings of objects */

Text objectText(AsnObject *object);

void addElement(Text &list, const Text &element) {
    if (list.size() <= MAX_SHOWN)
        list.append(list.empty() ? "" : " | ").append(element);
}

/* A set of values is a type with constraints. */
Text valueSetSetting(const AsnFieldValue *value) {
    const VNode setting = storedVNode(value->valueModule, value->valueRecord);
    if (setting.refRecord == 0)
        return "a value set";
    AsnModule *module =
        getAsnModule(setting.refModule < 2 ? value->valueModule
                                           : getModPtr(value->valueModule, setting.refModule));
    Text text;
    const auto add = [&](AsnType *set, int) { text = setText(set); };
    forTypeByRecNr(module, add, KIND_VALUE_SET, setting.refRecord);
    if (text.empty())
        forTypeByRecNr(module, add, KIND_TYPE, setting.refRecord);
    return text.empty() ? "a value set" : text;
}

Text settingText(AsnFieldValue *value) {
    Text text;
    forTypeFieldValue(value, [&](AsnFieldValue *, AsnType *type) { text = typeInShort(type); });
    forFixedTypeValueFieldValue(
        value, [&](AsnFieldValue *, AsnValue *setting) { text = valueText(setting); });
    forObjectFieldValue(value,
                        [&](AsnFieldValue *, AsnObject *object) { text = objectText(object); });
    if (isObjectSetFieldValue(value)) {
        forObjectSetFieldValue(value, [&](AsnFieldValue *, AsnObject *object, int) {
            addElement(text, objectText(object));
        });
        text = "{" + text + "}";
    }
    if (isFixedTypeValueSetFieldValue(value))
        text = valueSetSetting(value);
    return text.empty() ? "value record " + std::to_string(value->valueRecord) : text;
}

using SettingCall = Call<void(const Text &name, AsnFieldValue *value)>;

/* The settings and the defaults of an object, not what is absent. */
void forEachSetting(AsnObject *object, SettingCall func) {
    if (isPredefinedObjClass(object->governor)) {
        constexpr const char *names[] = {"&id", "&Type", "&property"};
        forEachPredefinedFieldValue(object, [&](AsnFieldValue *value, PredefinedField field) {
            if (!isEmptyFieldValue(value))
                func(names[field], value);
        });
        return;
    }
    forEachPossibleObjectFieldValue(object, [&](AsnObject *, AsnFieldValue *value, int) {
        if (!isEmptyFieldValue(value))
            func(fieldName(value->field), value);
    });
}

bool isNamedElsewhere(const AsnObject *object) {
    const bool isItself =
        object->posModule == object->baseModule && object->posRecord == object->baseRecord;
    return !isItself && object->baseId.id != nullptr;
}

/* The name if there is one, else what it is made of. */
Text objectText(AsnObject *object) {
    const NestingGuard nesting(&depth, object->posModule);
    Text text = getBaseRefOf(object);
    if (!text.empty())
        return text;
    forEachSetting(object, [&](const Text &name, AsnFieldValue *value) {
        if (text.size() <= MAX_SHOWN)
            addPart(text, name + " " + settingText(value));
    });
    return "{" + text + "}";
}

/* What the facts of definitions without a handle of a type have in common. */
void showTypeRecordFacts(ModRec *module, RecNr nr) {
    const TNode position = storedTNode(module, nr);
    showFact(2, recordText(module, nr, position.lineNr));
    showWrittenOptions(2, module, {position.tedFirst, position.tedLast});
}

void showValueRecordFacts(ModRec *module, RecNr nr) {
    const VNode position = storedVNode(module, nr);
    Text text = "value " + recordText(module, nr, position.lineNr);
    addPart(text, (position.valueFlags & VALUE_EXPORTED) != 0 ? "marked for export" : "");
    showFact(2, text);
    showWrittenOptions(2, module, {position.tedFirst, position.tedLast});
}

/* Whether "..." stands among the elements of a set, or alone. */
bool isExtensibleSet(const AsnObjectSet *set) {
    ModRec *module = set->posModule;
    const RecNr constraint = storedTNode(module, set->posRecord).constraintRec;
    if (constraint == 0)
        return false;
    readRec(module, REC_SUB, constraint);
    ChainGuard guard(REC_SUB);
    if (subRec.subKind == SUB_UNION && subRec.first != 0)
        readRec(module, REC_SUB, subRec.first);
    while (subRec.subKind != SUB_EXTENDED_VALUE_SET && subRec.next != 0) {
        guard.step(module);
        readRec(module, REC_SUB, subRec.next);
    }
    return subRec.subKind == SUB_EXTENDED_VALUE_SET;
}

} // namespace

void showValueSet(AsnType *set) {
    showLine(0, set->compId.id + (" " + kindInShort(set)) + " ::= " + setText(set));
    showTypeFacts(2, set);
}

void showValue(AsnValue *value) {
    const Text name = getRefOf(value) + " ";
    const Text governor = getTypeOfValue(value) == nullptr ? "" : typeInShort(getTypeOfValue(value));
    showLine(0, name + governor + " ::= " + valueText(value));
    showValueRecordFacts(value->posModule, value->posRecord);
}

void showClass(AsnObjClass *objClass) {
    const bool isItself =
        objClass->posModule == objClass->baseModule && objClass->posRecord == objClass->baseRecord;
    const Text name = orEmpty(objClass->compId.id);
    if (!isItself || isPredefinedObjClass(objClass)) {
        showLine(0, name + " ::= " + className(objClass));
        return showTypeRecordFacts(objClass->posModule, objClass->posRecord);
    }
    showLine(0, name + " ::= CLASS {");
    showTypeRecordFacts(objClass->posModule, objClass->posRecord);
    const int last = getNrOfObjClassFields(objClass) - 1;
    forEachObjClassField(objClass, [&](AsnObjClass *, AsnObjClassField *field, int nbr) {
        showLine(1, fieldName(field) + fieldGovernorText(field) + fieldPresenceText(field) +
                        (nbr < last ? "," : ""));
        showFact(3, recordText(field->posModule, field->posRecord, field->base.lineNr));
    });
    showLine(0, "}");
}

void showObject(AsnObject *object) {
    const Text head = orEmpty(object->compId.id) + (" " + className(object->governor)) + " ::= ";
    if (isNamedElsewhere(object)) {
        showLine(0, head + objectText(object));
        return showValueRecordFacts(object->posModule, object->posRecord);
    }
    showLine(0, head + "{");
    showValueRecordFacts(object->posModule, object->posRecord);
    forEachSetting(object, [&](const Text &name, AsnFieldValue *value) {
        showLine(1, name + " " + settingText(value));
        if (value->isDefault)
            showFact(3, "the default of the class");
    });
    showLine(0, "}");
}

void showObjectSet(AsnObjectSet *set) {
    Text elements;
    forObjectSet(set, [&](AsnObjectSet *, AsnObject *object, int) {
        addElement(elements, objectText(object));
    });
    if (isExtensibleSet(set))
        elements += elements.empty() ? "..." : ", ...";
    const Text name = orEmpty(set->compId.id);
    showLine(0, name + " " + className(set->governor) + " ::= {" + elements + "}");
    showTypeRecordFacts(set->posModule, set->posRecord);
}
