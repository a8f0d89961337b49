#include "project/browsernodes.h"

#include "base/fatal.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "objects/classes.h"
#include "objects/objects.h"
#include "objects/objectsets.h"
#include "options/ketracnf.h"
#include "project/taviconf.h"

namespace {

struct NodeTexts {
    const char *kind;
    const char *aux1;
    const char *aux2;
};

BrowserNode *newSourceNode(const Text &name, AsnModule *module, std::int32_t line,
                           const NodeTexts &texts) {
    const GlobalOptions *options = getGlobalOptions(module);
    return taviBrowserNewNode(convertUnderscores(name).c_str(), options->sourceDirectory,
                              options->sourceFileName, line, texts.kind, texts.aux1, texts.aux2);
}

BrowserNode *newNodeOfType(AsnType *type, std::int32_t line, const NodeTexts &texts) {
    return newSourceNode(getTypeRef(type), getModuleOfType(type), line, texts);
}

} // namespace

BrowserNode *taviBrowserNewProjectTree(const char *kind, const char *aux1, const char *aux2) {
    if (!taviIsActive())
        fatalError(FATAL_OPEN_READ, "No TAVI-PREFIX");
    return taviBrowserNewNode(taviRecord.prefix.c_str(), nullptr, nullptr, 0, kind, aux1, aux2);
}

BrowserNode *taviBrowserNewModuleNode(AsnModule *module, const char *kind, const char *aux1,
                                      const char *aux2) {
    return newSourceNode(getModuleRef(module), module, 1, {kind, aux1, aux2});
}

BrowserNode *taviBrowserNewTypeNode(AsnType *type, const char *kind, const char *aux1,
                                    const char *aux2) {
    const NodeTexts texts = {kind, aux1, aux2};
    BrowserNode *node = nullptr;
    if (!isBaseTypeInCurrentModule(type)) {
        /* The handle is asked for its place alone, so the generator need not name it. */
        const bool before = setCreateBETypMetaFlag(false);
        forTypeDefinedInAnotherModule(type, [&](AsnType *defined) {
            node = newSourceNode(getTypeRef(type), getModuleOfType(defined),
                                 getTypeDefinitionLine(defined), texts);
        });
        setCreateBETypMetaFlag(before);
    }
    return node != nullptr ? node : newNodeOfType(type, getTypeDefinitionLine(type), texts);
}

BrowserNode *taviBrowserNewClassNode(AsnObjClass *objClass, const char *kind, const char *aux1,
                                     const char *aux2) {
    const NodeTexts texts = {kind, aux1, aux2};
    const Text name = getRefOf(objClass);
    BrowserNode *node = nullptr;
    auto nodeAtDefinition = [&](AsnObjClass *defined) {
        node = newSourceNode(name, getModuleOf(defined), getClassDefinitionLine(defined),
                             texts);
    };
    if (!isBaseObjClassInCurrentModule(objClass))
        forObjClassDefinedInAnotherModule(objClass, nodeAtDefinition);
    if (node == nullptr)
        nodeAtDefinition(objClass);
    return node;
}

BrowserNode *taviBrowserNewObjectSetNode(AsnObjectSet *objectSet, const char *kind,
                                         const char *aux1, const char *aux2) {
    return newSourceNode(getDefObjectSetId(objectSet), getModuleOf(objectSet),
                         getObjectSetDefinitionLine(objectSet), {kind, aux1, aux2});
}

BrowserNode *taviBrowserNewObjectNode(AsnObject *object, const char *kind, const char *aux1,
                                      const char *aux2) {
    return newSourceNode(getRefOf(object), getModuleOf(object),
                         getObjectDefinitionLine(object), {kind, aux1, aux2});
}
