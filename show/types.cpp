#include "show/show.h"

#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "show/references.h"
#include "show/texts.h"
#include "show/writer.h"
#include "store/records.h"

namespace {

int depth = 0;

Text componentName(AsnType *comp) {
    if (getTypeMainType(comp) == TYP_EXTENSION_MARKER)
        return {};
    return getTypeRef(comp) + " ";
}

void showComponents(int level, AsnType *type, const Text &behind) {
    const int last = nrOfWalkedComps(type) - 1;
    forEachTypeComp(type, [&](AsnType *, AsnType *comp, int nbr) {
        showType(level, comp, componentName(comp), presenceText(comp) + (nbr < last ? "," : ""));
    });
    showLine(level - 1, "}" + behind);
}

/* A definition of another module is walked there. */
void forPartsOf(AsnType *type, CompCall func) {
    if (isListType(type))
        forTypeElem(type, [&](AsnType *father, AsnType *elem) { func(father, elem, 0); });
    else
        forEachTypeComp(type, func);
}

} // namespace

void showType(int level, AsnType *type, const Text &before, const Text &behind) {
    const NestingGuard nesting(&depth, type->posModule);
    const bool isList = isListType(type);
    if (!hasPartsHere(type)) {
        showLine(level, before + typeHead(type) + behind);
        showTypeFacts(level + 2, type);
    } else if (isList) {
        showLine(level, before + typeHead(type));
        showTypeFacts(level + 2, type);
        forTypeElem(type, [&](AsnType *, AsnType *elem) { showType(level + 1, elem, "", behind); });
    } else {
        showLine(level, before + typeHead(type) + " {");
        showTypeFacts(level + 2, type);
        showComponents(level + 1, type, behind);
    }
}

bool showTypePart(AsnType *type, const Text &before, std::string_view path) {
    const NestingGuard nesting(&depth, type->posModule);
    const std::string_view name = path.substr(0, path.find('.'));
    bool found = false;
    const auto visit = [&](AsnType *, AsnType *comp, int) {
        Text compName = "*";
        if (!isListType(type))
            compName = getTypeRef(comp);
        if (found || !isNameAskedFor(compName, name))
            return;
        const Text here = before + "." + compName;
        if (name.size() < path.size()) {
            found = showTypePart(comp, here, path.substr(name.size() + 1));
            return;
        }
        found = true;
        showEmptyLine();
        showType(0, comp, here + " ::= ", presenceText(comp));
    };
    if (isSynonymType(type))
        forTypeDefinedInAnotherModule(type, [&](AsnType *defined) { forPartsOf(defined, visit); });
    else
        forPartsOf(type, visit);
    return found;
}
