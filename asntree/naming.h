#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "asntree/references.h"

namespace asntree {

/* How the C name of a definition is made, by the rules of the naming options: an empty text is one
   that isn't given. */
struct Naming {
    std::string pref;
    std::string name; /* in place of the ASN.1 name */
    std::string suff;
    std::string conv; /* "", or "H" and "L" or "U" */
};

/* The naming options that stand in a tree: TPREF=, VNAME=Name:text and their like, in their order.
   Those of components and fields are passed over. */
struct NamingRules {
    struct Rule {
        std::optional<std::string> pref;
        std::optional<std::string> name;
        std::optional<std::string> suff;
        std::optional<std::string> conv;
    };
    struct Kind {
        std::vector<Rule> rules;                             /* the first one is for all names */
        std::unordered_map<std::string, std::size_t> byText; /* as an option wrote the name */
        std::unordered_map<std::string, std::size_t> byName; /* with "_"; the first of a name */
    };
    Kind kinds[6]; /* by row */

    NamingRules();
};

/* Takes a text such as "-TPREF=X"; one that is no naming option is passed over. */
void addNamingOption(NamingRules &rules, std::string_view option);

/* The letters that naming options of a kind begin with: "T", "CL", "V" ...; empty for kinds that
   have no C name. */
std::string_view namingPrefix(DefinitionKind kind);

/* `overrides` are naming overrides of the definition itself, as they stand in a tree ("-TPREF=X"),
   later ones in front of earlier ones. */
Naming namingOf(const NamingRules &rules, DefinitionKind kind, std::string_view name,
                const std::vector<std::string> &overrides);

/* The name in C. `name` is the one of the text, with "-" or "_". */
std::string nameInC(const Naming &naming, std::string_view name, std::size_t nameLength);

} // namespace asntree
