#include "asntree/emitter.h"

#include "asntree/tags.h"

namespace asntree {

int replacedTag(Emitter &e, TypeUse base) {
    const BuiltinKind *const row = base ? builtinKind(base.type->kind) : nullptr;
    return row != nullptr && (row->standsIn || emittedAsOctets(e, base)) ? row->tag : 0;
}

namespace {

int classOfTag(TagClassWord word) {
    switch (word) {
    case TagClassWord::Universal:
        return TAG_UNI;
    case TagClassWord::Application:
        return TAG_APP;
    case TagClassWord::Private:
        return TAG_PRV;
    default:
        return TAG_CTX;
    }
}

/* Tags of one node, chained as they come. */
struct TagList {
    TreeState &ts;
    RecNr node;
    RecNr last = 0;

    void add(int tagClass, bool isExplicit, std::int64_t number) {
        const RecNr nr = ts.tree().addTag(
            {tagClass, isExplicit ? TAG_MODE_EXPLICIT : 0, static_cast<std::int32_t>(number), 0});
        (last == 0 ? ts.tree().t(node).firstTagRec
                   : ts.tree().tagRecs[static_cast<std::size_t>(last - 1)].next) = nr;
        last = nr;
    }
};

/* What stands behind the tags of a layer has no tag that could be replaced. */
bool isUntaggedInside(Emitter &e, TypeUse layer) {
    switch (layer.type->kind) {
    case TypeKind::Choice:
    case TypeKind::Any:
        return true;
    case TypeKind::Reference:
    case TypeKind::Selection:
    case TypeKind::Field: {
        const TypeUse next = follow(e.c, layer);
        return next ? isUntagged(e.c, next) : layer.type->kind == TypeKind::Field;
    }
    default:
        return false;
    }
}

/* The mode of the tag `index` of a layer. */
bool isExplicit(Emitter &e, TypeUse layer, bool isDummy, std::size_t index) {
    const std::vector<TagSpec> &tags = layer.type->tags;
    if (tags[index].mode == TagModeWord::Explicit ||
        (tags[index].mode == TagModeWord::None &&
         layer.scope->module->syntax->tags == TagDefault::Explicit))
        return true;
    if (tags[index].mode == TagModeWord::Implicit || index + 1 != tags.size())
        return false;
    return isDummy || isUntaggedInside(e, layer);
}

} // namespace

void emitTags(Emitter &e, TreeState &ts, const Pending &pending, const Layers &layers) {
    TagList list{ts, pending.nr};
    if (pending.tag)
        list.add(TAG_CTX, isUntagged(e.c, pending.use), *pending.tag);
    for (std::size_t i = 0; i < layers.uses.size(); ++i) {
        const TypeUse layer = layers.uses[i];
        for (std::size_t k = 0; k < layer.type->tags.size(); ++k)
            list.add(classOfTag(layer.type->tags[k].tagClass),
                     isExplicit(e, layer, layers.isDummy[i], k),
                     tagNumber(e.c, layer.type->tags[k], layer.scope));
    }
    if (layers.target.assignment == nullptr)
        if (const int number = replacedTag(e, layers.last()); number != 0)
            list.add(TAG_UNI, false, number);
}

} // namespace asntree
