#include <cstdio>

#include "base/fatal.h"
#include "driver/driver.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/valuequeries.h"
#include "options/catalogue.h"
#include "options/hooks.h"
#include "options/ketracnf.h"
#include "store/tree.h"

/* A generator for another language on the same back end: prints Python classes for the types of the
   modules that are named.

   usage: stx2py -S=DIRECTORY/ MODULE ... */

namespace {

/* "one-way" becomes "one_way". */
Text pythonName(Text name) {
    return convertHyphens(name);
}

Text pythonType(AsnType *type);

Text builtinType(AsnType *type) {
    switch (getTypeMainType(type)) {
    case TYP_BOOLEAN:
        return "bool";
    case TYP_INTEGER:
        return "int";
    case TYP_REAL:
        return "float";
    case TYP_NULL:
        return "None";
    case TYP_BITSTR:
    case TYP_OCTSTR:
        return "bytes";
    default:
        return isRestrCharStringType(type) ? "str" : "object";
    }
}

/* What a type without a name is made of. */
Text contents(AsnType *type) {
    Text text;
    if (isListType(type))
        forEachTypeCompOrElem(type, [&](AsnType *, AsnType *element, int) {
            text = "list[" + pythonType(element) + "]";
        });
    else if (getTypeMainType(type) == TYP_CHOICE)
        forEachTypeComp(type, [&](AsnType *, AsnType *alternative, int) {
            if (!isTypeExtensionmarker(alternative))
                text += (text.empty() ? "" : " | ") + pythonType(alternative);
        });
    else
        text = isStructuredType(type) ? "dict" : builtinType(type);
    return text;
}

/* What a value of the type is: the class of its definition, or what the type is made of. */
Text pythonType(AsnType *type) {
    return isDefinedBaseType(type) ? pythonName(getDefBaseTypeId(type)) : contents(type);
}

void printComponent(AsnType *comp) {
    const bool optional = isOptionalTypeComp(comp);
    std::printf("    %s: %s%s\n", pythonName(getTypeCompRef(comp)).c_str(),
                pythonType(comp).c_str(), optional ? " | None = None" : "");
}

void printStructure(AsnType *type, const Text &name) {
    std::printf("\n@dataclass(kw_only=True)\nclass %s:\n", name.c_str());
    int printed = 0;
    forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
        if (isTypeExtensionmarker(comp))
            return;
        printComponent(comp);
        ++printed;
    });
    if (printed == 0)
        std::puts("    pass");
}

void printEnumeration(AsnType *type, const Text &name) {
    std::printf("\nclass %s(IntEnum):\n", name.c_str());
    forEachNamedNumber(type, [](AsnType *, AsnValue *item, int) {
        std::printf("    %s = %d\n", pythonName(getRefOf(item)).c_str(), integerValue(item));
    });
}

/* In quotation marks: what it stands for may be defined further down. */
void printAlias(const Text &name, const Text &type) {
    std::printf("\n%s = \"%s\"\n", name.c_str(), type.c_str());
}

void printDefinition(AsnType *type, int) {
    const Text name = pythonName(getDefTypeId(type));
    if (isSynonymType(type))
        printAlias(name, pythonName(getDefBaseTypeId(type)));
    else if (getTypeMainType(type) == TYP_SEQ || getTypeMainType(type) == TYP_SET)
        printStructure(type, name);
    else if (getTypeMainType(type) == TYP_ENUM)
        printEnumeration(type, name);
    else
        printAlias(name, contents(type));
}

/* Loading a tree makes and settles a block of options; this generator keeps nothing of its own. */
void setHooks() {
    treeHooks.newOptions = std::make_shared<GlobalOptions>;
    treeHooks.settleStoredOptions = settleStoredOptions;
    optionHooks.globalBEOptionOK = [](BEModMetaRec *, const char *) { return true; };
}

} // namespace

int main(int argc, char **argv) {
    static constexpr const char *usage[] = {"stx2py -S=DIRECTORY/ MODULE ...", nullptr};
    setHooks();
    initBackend(argc, argv, "STX2PY", 100, 0, usage);
    std::puts("from __future__ import annotations\nfrom dataclasses import dataclass\n"
              "from enum import IntEnum");
    forEachModule([](AsnModule *module) { forEachType(module, printDefinition); });
    return glbExitCode;
}
