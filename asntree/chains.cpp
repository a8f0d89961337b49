#include "asntree/check.h"

#include "asntree/references.h"

/* Definitions that are nothing but references to others. What is asked of a type or a value goes
   along such a chain each time, and a tree repeats on each link the constraints that it inherits;
   so there is an end to the length of a chain, far above what people write. */

namespace asntree {

namespace {

constexpr int MAX_LINKS = 1000;

const Assignment *next(const Compilation &c, const Assignment &assignment) {
    const Reference *reference = nullptr;
    if (assignment.kind == AssignmentKind::Type && assignment.type != nullptr &&
        assignment.type->kind == TypeKind::Reference)
        reference = &assignment.type->ref;
    if (assignment.kind == AssignmentKind::Value && assignment.value != nullptr &&
        assignment.value->kind == ValueKind::Reference)
        reference = &assignment.value->ref;
    return reference == nullptr
               ? nullptr
               : definitionNamed(c, *c.moduleInfos.at(assignment.module), *reference);
}

} // namespace

bool checkChains(Compilation &c) {
    std::unordered_map<const Assignment *, int> links; /* of those that are part of a chain */
    std::vector<const Assignment *> chain;
    for (const auto &module : c.modules)
        for (const Assignment *assignment : module->syntax->assignments) {
            if (next(c, *assignment) == nullptr)
                continue;
            const Assignment *at = assignment;
            for (; at != nullptr && links.emplace(at, 0).second; at = next(c, *at))
                chain.push_back(at);
            int count = at == nullptr ? 0 : links[at]; /* 0 in a circle, which is told elsewhere */
            for (; !chain.empty(); chain.pop_back()) {
                links[chain.back()] = ++count;
                if (count <= MAX_LINKS)
                    continue;
                error(c.diagnostics, chain.back()->name.place,
                      "`" + std::string(chain.back()->name.text) +
                          "` is the end of a chain of over " + std::to_string(MAX_LINKS) +
                          " references");
                return false;
            }
        }
    return true;
}

} // namespace asntree
