#include "asntree/syntax.h"

namespace asntree {

namespace {

constexpr std::size_t BLOCK = 128;

/* `used` counts what is taken of the last block. */
template <typename Node>
Node *takeNode(std::vector<std::unique_ptr<Node[]>> &blocks, std::size_t &used) {
    if (blocks.empty() || used == BLOCK) {
        blocks.push_back(std::make_unique<Node[]>(BLOCK));
        used = 0;
    }
    return &blocks.back()[used++];
}

template <typename Node, typename Kind> Node *withKind(Node *node, Kind kind, Place place) {
    node->kind = kind;
    node->place = place;
    return node;
}

} // namespace

Type *newType(Arena &arena, TypeKind kind, Place place) {
    return withKind(takeNode(arena.typeBlocks, arena.types), kind, place);
}

Value *newValue(Arena &arena, ValueKind kind, Place place) {
    return withKind(takeNode(arena.valueBlocks, arena.values), kind, place);
}

Constraint *newConstraint(Arena &arena, ConstraintKind kind, Place place) {
    return withKind(takeNode(arena.constraintBlocks, arena.constraints), kind, place);
}

ConstraintSpec *newConstraintSpec(Arena &arena, Place place) {
    ConstraintSpec *spec = takeNode(arena.specBlocks, arena.specs);
    spec->place = place;
    return spec;
}

} // namespace asntree
