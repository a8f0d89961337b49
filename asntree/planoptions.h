#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace asntree {

/* What the options of a run say about the plan, as plain values; the settings are read into them
   once, so that the parts of the plan don't know how an option is written. */
struct PlanOptions {
    /* -PREFIX=Module:file:gen */
    struct Prefix {
        std::string module;
        std::string file;
        std::string gen;
    };
    /* -MERGE=prefix:Module,Module */
    struct Merge {
        std::string prefix;
        std::vector<std::string> modules;
    };
    /* -ENTRY=; `type` is "Type", "Module.Type", "*" or, for the categories of all others, empty. */
    struct Entry {
        std::string text; /* the option, for messages */
        std::string type;
        std::uint8_t categories = 0; /* bits; 0: none given */
    };
    enum class Unique : std::uint8_t { Run, Includes, No };

    int prefixLength = 32;
    int nameLength = 128; /* of the trees' NAMELEN=; one that a scope sets counts there alone */
    std::vector<Prefix> prefixes;
    std::vector<Merge> merges;
    std::vector<Entry> entries;
    Unique unique = Unique::Run;
    std::uint8_t encoded = 0xFF; /* -ENCF= and its like: categories that get the function */
    std::uint8_t decoded = 0xFF;
    std::uint8_t asked = 0xFF;
    std::uint8_t printed = 0xFF;
};

} // namespace asntree
