#include "show/show.h"

#include "base/toolinfo.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/valuewalk.h"
#include "objects/objectsets.h"
#include "show/references.h"
#include "show/writer.h"
#include "store/records.h"

namespace {

/* "2026-11-23 15:18:00" */
Text timeText(const TimeStamp &stamp) {
    return formatText("%04d-%02d-%02d %02d:%02d:%02d", stamp.date / 10000, stamp.date / 100 % 100,
                      stamp.date % 100, stamp.time / 10000, stamp.time / 100 % 100,
                      stamp.time % 100);
}

void showCounts(const ModRec *module) {
    constexpr const char *kinds[] = {"modules",     "types",   "values",    "tags",
                                     "constraints", "options", "path steps"};
    Text text;
    for (int kind = REC_MNODE; kind <= REC_SNODE; ++kind)
        addPart(text,
                std::to_string(recCount(module, static_cast<RecKind>(kind))) + " " + kinds[kind]);
    showFact(1, "records: " + text);
}

void showImports(ModRec *module) {
    for (const auto &import : module->imports) {
        Text text = Text("imports from ") + orEmpty(import->picName) + ", module " +
                    std::to_string(import->picNr) + " in references";
        if (import->picMod == nullptr)
            text += ", not loaded";
        else if (import->picMod->state == MOD_PREDEFINED)
            text += ", which has no tree";
        else
            text += ", " + import->picMod->genPrefix + ".stx";
        if (import->picMark >> 4 != 0)
            text += ", exports followed";
        showFact(1, text);
    }
}

void showHead(AsnModule *handle) {
    ModRec *module = handle->modRec;
    const Text version =
        "version " + printVersionStri(module->stamp.treeVersion, -1) + ", compiled ";
    showEmptyLine();
    showLine(0, module->moduleName + " DEFINITIONS ::= BEGIN");
    showFact(1, "tree " + module->genPrefix + ".stx, " + version + timeText(module->stamp));
    const Text source = getModuleFilePath(handle);
    if (!source.empty())
        showFact(1, "source " + source);
    showFact(1, module->exportsMode == 0 ? "exports everything" : "exports what is marked");
    showCounts(module);
    showImports(module);
    showOptions(module);
}

/* Those with this name; an empty one takes all. Each is shown behind an empty line. */
struct Choice {
    std::string_view name;
    std::string_view part; /* of a type: the path to it, or empty */
    bool found = false;
};

bool isChosen(Choice &choice, const FixRec &id) {
    if (!choice.name.empty() && !isNameAskedFor(orEmpty(id.id), choice.name))
        return false;
    choice.found = true;
    showEmptyLine();
    return true;
}

void showTypeChoice(Choice &choice, AsnType *type) {
    const Text name = orEmpty(type->compId.id);
    if (choice.part.empty()) {
        if (!isChosen(choice, type->compId))
            return;
        if ((storedTNode(type->posModule, type->posRecord).nodeFlags & NODE_SET) != 0)
            showValueSet(type);
        else
            showType(0, type, name + " ::= ", "");
    } else if (isNameAskedFor(name, choice.name) && showTypePart(type, name, choice.part)) {
        choice.found = true;
    }
}

void showChosen(AsnModule *module, Choice &choice) {
    forEachType(module, [&](AsnType *type, int) { showTypeChoice(choice, type); });
    if (!choice.part.empty())
        return;
    forEachValue(module, [&](AsnValue *value, int) {
        if (isChosen(choice, value->compId))
            showValue(value);
    });
    forEachObjClass(module, [&](AsnObjClass *objClass, int) {
        if (isChosen(choice, objClass->compId))
            showClass(objClass);
    });
    forEachObject(module, [&](AsnObject *object, int) {
        if (isChosen(choice, object->compId))
            showObject(object);
    });
    forEachObjectSet(module, [&](AsnObjectSet *set, int) {
        if (isChosen(choice, set->compId))
            showObjectSet(set);
    });
}

} // namespace

void showModule(AsnModule *module) {
    showHead(module);
    Choice all;
    showChosen(module, all);
    showEmptyLine();
    showLine(0, "END");
}

bool showDefinition(AsnModule *module, const Text &path) {
    const std::string_view text = path;
    const std::size_t dot = text.find('.');
    Choice choice{text.substr(0, dot), dot == text.npos ? "" : text.substr(dot + 1)};
    if (!choice.name.empty())
        showChosen(module, choice);
    return choice.found;
}
