#pragma once

#include "asntree/rename.h"

namespace asntree {

/* How a name stands in C. The order is that in which the places of one name are looked through. */
enum class NameRole : std::uint8_t {
    Own,            /* the name of a type or class */
    Define,         /* the name of a value or object, which is a macro */
    Derived,        /* a name that is made of a definition's */
    Member,         /* a component or field: in the way of defines alone */
    Reserved,       /* of C or the run-time layer */
    ReservedMember, /* the same, in the way of defines alone */
};

/* A definition that has a name in C. */
struct NamedDefinition {
    const Assignment *assignment = nullptr;
    DefinitionKind kind = DefinitionKind::Type;
    std::uint32_t tree = 0;
    Naming naming;
    std::string given; /* the prefix that it has without a clash */
    int step = 0;      /* 0: as it is; 1: with its module's prefix; 2: with a number */
    std::string reason;
};

/* One place where a name stands. Names are told apart by their hashes. */
struct NameUse {
    std::uint64_t hash;
    std::uint32_t owner; /* a definition; for members the tree */
    NameRole role;
};

struct NameTable {
    const Compilation &c;
    const Plan &plan;
    const GivenNames &given;
    std::vector<NamedDefinition> definitions;
    std::vector<NameUse> fixed; /* members and reserved names, which nothing changes */
};

std::uint64_t hashOf(std::string_view name);
std::string nameInC(const NameTable &table, const NamedDefinition &definition);
/* All definitions with names, tree by tree, and the fixed names. */
void fillTable(NameTable &table);
/* The names that definitions have in C as they are called now, and the fixed ones. */
std::vector<NameUse> allNames(const NameTable &table);

} // namespace asntree
