#include "project/items.h"

#include <cstring>

#include "base/files.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "model/valuequeries.h"
#include "objects/classes.h"
#include "objects/objects.h"
#include "objects/objectsets.h"
#include "options/ketracnf.h"
#include "project/browsernodes.h"
#include "project/summary.h"
#include "project/taviconf.h"

namespace {

/* Makes the node below the module's current that has the name; `create` makes it, if need be. */
template <typename F> void useNode(const Text &name, F create) {
    BrowserNode *node = taviBrowserFindSubNode(g_taviModuleNode, convertUnderscores(name).c_str());
    if (node == nullptr) {
        node = create();
        taviBrowserInsertSubNode(g_taviModuleNode, node, true);
    }
    g_taviTypeNode = node;
}

/* A definition with a name; one that was made for the governor of a value has none. */
bool isNamedType(AsnType *type) {
    return isDefinedType(type) && !getTypeRef(type).empty();
}

/* Where the file was written to last: on the line begun, or on the last one that was ended. */
std::int32_t lastLine(int file) {
    return static_cast<std::int32_t>(linesInF(file)) + (columnsInF(file) > 0 ? 1 : 0);
}

} // namespace

void taviBeginProject() {
    if (!taviIsActive())
        return;
    taviSummaryOpenFile();
    g_taviBrowserTree = taviBrowserNewProjectTree("Type", nullptr, nullptr);
}

void taviEndProject() {
    if (!taviIsActive())
        return;
    taviBrowserPrintTree(g_taviBrowserTree, g_taviTreeFileSuffix.c_str());
    taviBrowserDeleteTree(g_taviBrowserTree);
    g_taviBrowserTree = g_taviModuleNode = g_taviTypeNode = nullptr;
    taviSummaryCloseFile();
}

void taviBeginModule(AsnModule *module) {
    if (!taviIsActive())
        return;
    g_taviModuleNode = taviBrowserNewModuleNode(module, "ASN.1 module", nullptr, nullptr);
    taviBrowserInsertSubNode(g_taviBrowserTree, g_taviModuleNode, true);
    g_taviTypeNode = g_taviModuleNode;
}

void taviUseTypeNode(AsnType *type) {
    if (!taviIsActive())
        return;
    while (type != nullptr && !isNamedType(type))
        type = getFatherOfTypeComp(type);
    if (type == nullptr)
        return;
    useNode(getTypeRef(type),
            [type] { return taviBrowserNewTypeNode(type, "ASN.1 type", nullptr, nullptr); });
}

void taviUseClassNode(AsnObjClass *objClass) {
    if (!taviIsActive())
        return;
    useNode(getRefOf(objClass), [objClass] {
        return taviBrowserNewClassNode(objClass, "ASN.1 object class", nullptr, nullptr);
    });
}

void taviUseObjectNode(AsnObject *object) {
    if (!taviIsActive())
        return;
    useNode(getRefOf(object), [object] {
        return taviBrowserNewObjectNode(object, "ASN.1 object", nullptr, nullptr);
    });
}

void taviUseObjectSetNode(AsnObjectSet *objectSet) {
    if (!taviIsActive())
        return;
    useNode(getDefObjectSetId(objectSet), [objectSet] {
        return taviBrowserNewObjectSetNode(objectSet, "ASN.1 object set", nullptr, nullptr);
    });
}

void taviUseTypeNodeOfValue(AsnValue *value) {
    if (!taviIsActive())
        return;
    g_taviTypeNode = g_taviModuleNode;
    AsnType *type = getTypeOfValue(value);
    if (type == nullptr)
        return;
    if (isNamedType(type)) {
        taviUseTypeNode(type);
        return;
    }
    const bool before = setCreateBETypMetaFlag(false);
    forNextDefinedType(type, taviUseTypeNode);
    setCreateBETypMetaFlag(before);
}

void taviAddItem(BrowserNode *parent, const char *kind, int file,
                 std::initializer_list<Part> name) {
    if (!taviIsActive() || file == 0)
        return;
    Text whole;
    appendParts(whole, name);
    BrowserNode *node =
        taviBrowserNewNode(whole.c_str(), dirOfF(file).c_str(), nameOfFnoDir(file).c_str(),
                           lastLine(file), kind, nullptr, nullptr);
    taviBrowserInsertSubNode(parent, node, false);
}

void taviAddDefine(int file, const Text &line) {
    if (!taviIsActive())
        return;
    const std::size_t begin = std::strlen("#define ");
    const Text name = line.substr(begin, line.find(' ', begin) - begin);
    taviAddItem(ITEM_DEFINE, file, {name});
}

void taviWarn(AsnModule *module, std::int32_t line, const char *title, const char *text) {
    if (!taviIsActive())
        return;
    const GlobalOptions *options = getGlobalOptions(module);
    taviSummaryWarning(options->sourceDirectory, options->sourceFileName, line, title, text);
}
