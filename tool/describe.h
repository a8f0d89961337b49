#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

/* What the program that velmo-tool makes has to know of types besides their functions: names, tags and
   kinds, in the shape of "asntool.h" of the run-time layer. */

struct AsnType;

namespace tool {

/* A type at the place where it is used: a component, an element or an entry. */
struct Place {
    std::string name; /* as ASN.1 writes it; empty for an element */
    std::size_t type = NO_TYPE;
    std::vector<std::uint32_t> tags; /* words of the run-time layer, the outermost first */
    std::int64_t low = INT64_MIN;    /* range of a number, sizes of a string or list */
    std::int64_t high = INT64_MAX;
    std::string rules; /* other constraints: " (FROM ("0".."9"))" */
    int status = 0;      /* CompStatus */
    bool listed = false; /* of an entry: the program lists it without being asked for all */

    static constexpr std::size_t NO_TYPE = SIZE_MAX; /* an extension marker */
};

struct Type {
    std::string name; /* of the definition; empty for a type that is written in line */
    std::string kind; /* the word of the run-time layer: "TYP_SEQ" */
    std::vector<Place> places;
    std::vector<std::pair<std::int64_t, std::string>> names; /* of numbers or bits */
    bool filled = false;
};

/* A type with functions of its own. */
struct Entry {
    Place place;
    std::string kind;
    std::string functions; /* C name of an encoder without "enc", and so on */
    std::string value;     /* C type */
};

struct Module {
    std::string name;
    std::string filePrefix;
    std::string codingPrefix; /* in front of the names of encoders and decoders */
    std::vector<Entry> entries;
};

struct Description {
    std::vector<Module> modules; /* those with entries */
    std::vector<Type> types;
};

/* The entry types of some trees, as "prefix.Type". */
using EntryNames = std::set<std::string>;

/* Both load the trees that velmo's command line names. What they can't load ends the process with a
   message, so that each is called once, in a process of its own. */
EntryNames entriesOf(const std::vector<std::string> &velmoArguments);
Description describe(const std::vector<std::string> &velmoArguments, const EntryNames &listed);

/* Constraints that least and greatest values or sizes don't tell, as ASN.1 writes them. */
std::string rulesOf(AsnType *type);

/* The C source with the tables of a description and the function `main`. */
std::string programText(const Description &description);

} // namespace tool
