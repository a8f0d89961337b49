#pragma once

#include "asntree/values.h"

/* Tags as X.680 assigns them, before any rule of a tree's format. */

namespace asntree {

struct Tag {
    TagClassWord tagClass = TagClassWord::Context;
    std::int64_t number = 0;
    bool operator==(const Tag &) const = default;
    auto operator<=>(const Tag &) const = default;
};

/* True if AUTOMATIC TAGS number the components of a SEQUENCE, SET or CHOICE: its module says so, and
   none of the components that are written in it has a tag of its own. */
bool hasAutomaticTags(Compilation &c, TypeUse structure);

/* The numbers that automatic tagging gives, parallel to componentsOf (structure): the roots first,
   then the additions. */
std::vector<std::int64_t> automaticNumbers(Compilation &c, TypeUse structure);

/* The tags that a value of the type may begin with: one, those of the alternatives for an untagged
   CHOICE, none for an open type or ANY. */
std::vector<Tag> outerTags(Compilation &c, TypeUse type);

/* True for a type without a tag: an untagged CHOICE, an open type, ANY, or a reference to one. */
bool isUntagged(Compilation &c, TypeUse type);

/* The number of a tag; 0 after a message. */
std::int64_t tagNumber(Compilation &c, const TagSpec &tag, const Scope *scope);

/* "[5]", "[APPLICATION 5]", "INTEGER" for messages. */
std::string textOf(const Tag &tag);

/* Where a component of a structure stands in it: for one that COMPONENTS OF brings there, that. */
Place placeIn(Compilation &c, TypeUse structure, const Component &component);

/* Reports tags that aren't distinct where they have to be. */
void checkTags(Compilation &c, TypeUse structure);

} // namespace asntree
