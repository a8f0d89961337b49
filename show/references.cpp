#include "show/references.h"

#include <algorithm>

#include "model/backend.h"
#include "store/classify.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

bool isInstance(const AsnType *type) {
    return (type->firstTypeFlags & TYPE_INSTANTIATED) != 0;
}

constexpr std::string_view predefinedPrefix = "iso8824#";

ModRec *moduleOfReference(ModRec *module, std::int32_t moduleNr) {
    return moduleNr < 2 ? module : getModPtr(module, moduleNr);
}

} // namespace

Text typeRecordName(const ModRec *module, const NodePlace &place) {
    const bool isLoaded = place.module == nullptr || place.module->state == MOD_LOADED;
    const TNode *node = isLoaded ? &storedTNode(place.module, place.nr) : nullptr;
    if (node != nullptr && (node->mainType == TYP_TYPE_ID || node->mainType == TYP_ABSTR_STX) &&
        node->nameIdx == 0)
        return node->mainType == TYP_TYPE_ID ? "TYPE-IDENTIFIER" : "ABSTRACT-SYNTAX";
    if (node == nullptr || node->nameIdx == 0)
        return place.module->genPrefix + "#" + std::to_string(place.nr);
    const Text name = getStri(place.module, node->nameIdx);
    return place.module == module ? name : place.module->moduleName + "." + name;
}

bool isReferenceNotation(const AsnType *type) {
    const TNode &position = storedTNode(type->posModule, type->posRecord);
    switch (position.mainType) {
    case TYP_SYNONYM:
        return position.refRecord != 0 && !isInstance(type);
    case TYP_SELECTION:
    case TYP_FIELDLIST:
        return position.auxRecord != 0;
    default:
        return false;
    }
}

bool standsForDefinition(const AsnType *type) {
    const TNode &position = storedTNode(type->posModule, type->posRecord);
    const bool isSelected =
        position.mainType == TYP_SELECTION && type->base.compStatus != TCS_HEADER;
    return isReferenceNotation(type) && !isSelected;
}

bool isNameAskedFor(std::string_view name, std::string_view asked) {
    const auto plain = [](char c) { return c == '-' ? '_' : c; };
    return std::ranges::equal(name, asked, {}, plain, plain);
}

Text pathEndName(ModRec *module, RecNr first) {
    readLastSNode(module, first);
    ModRec *end = moduleOfReference(currModule(REC_SNODE), sNode.refModule);
    return sNode.refRecord > 0 ? typeRecordName(module, {end, sNode.refRecord}) : Text("a value");
}

Text referenceText(const AsnType *type) {
    ModRec *module = type->posModule;
    const TNode position = storedTNode(module, type->posRecord);
    const NodePlace referred = {moduleOfReference(module, position.refModule), position.refRecord};
    const Text name = position.refRecord == 0 ? "" : typeRecordName(module, referred);
    if (position.mainType == TYP_SYNONYM)
        return name;
    Text end = pathEndName(module, position.auxRecord);
    end.erase(0, end.rfind('.') + 1);
    /* Predefined classes have no records here. This field is the open one of each of them. */
    if (end.starts_with(predefinedPrefix) && type->base.mainType == TYP_OPEN)
        return "TYPE-IDENTIFIER.&Type";
    return position.mainType == TYP_SELECTION ? end + " < " + name : name + ".&" + end;
}
