#include "tool/describe.h"

#include "cbet/constants.h"

namespace tool {

namespace {

/* Types refer to rows of the other tables by their numbers; rows are collected while types are written. */
struct Tables {
    std::string tags, places, names, types;
    std::size_t nrOfTags = 0;
    std::size_t nrOfPlaces = 0;
    std::size_t nrOfNames = 0;
};

std::string row(const char *table, std::size_t number) {
    return std::string("&") + table + " [" + std::to_string(number) + "]";
}

std::string quoted(const std::string &name) {
    return name.empty() ? "NULL" : "\"" + name + "\"";
}

std::string bound(std::int64_t number) {
    if (number == INT64_MIN)
        return "MINLONG";
    return number == INT64_MAX ? "MAXLONG" : std::to_string(number) + "LL";
}

/* { "id", &types [3], &tags [5], 0LL, 255LL, NULL, TCS_MANDATORY, 0 } */
std::string placeText(Tables &tables, const Place &place) {
    const std::size_t firstTag = tables.nrOfTags;
    for (const std::uint32_t tag : place.tags)
        tables.tags += std::to_string(tag) + "u, ";
    tables.tags += "0,\n";
    tables.nrOfTags += place.tags.size() + 1;
    return "  { " + quoted(place.name) + ", " +
           (place.type == Place::NO_TYPE ? "NULL" : row("types", place.type)) + ", " +
           row("tags", firstTag) + ", " + bound(place.low) + ", " + bound(place.high) + ", " +
           quoted(cStringText(place.rules)) + ", " +
           std::to_string(place.status) + ", " + (place.listed ? "1" : "0") + " },\n";
}

void addType(Tables &tables, const Type &type) {
    const std::string places =
        type.places.empty() ? "NULL" : row("places", tables.nrOfPlaces);
    const std::string names = type.names.empty() ? "NULL" : row("names", tables.nrOfNames);
    for (const Place &place : type.places)
        tables.places += placeText(tables, place);
    for (const auto &[number, name] : type.names)
        tables.names += "  { " + bound(number) + ", " + quoted(name) + " },\n";
    tables.nrOfPlaces += type.places.size();
    tables.nrOfNames += type.names.size();
    tables.types += "  { " + quoted(type.name) + ", " + type.kind + ", " + places + ", " +
                    std::to_string(type.places.size()) + ", " + names + ", " +
                    std::to_string(type.names.size()) + " },\n";
}

std::string table(const char *type, const std::string &name, std::size_t rows, const std::string &text) {
    if (rows == 0)
        return "";
    return std::string("\nstatic const ") + type + " " + name + " [" + std::to_string(rows) +
           "] = {\n" + text + "};\n";
}

/* { "Msg", TYP_SEQ, 16u, (ENTRYFUNC)encMsg, (ENTRYFUNC)decMsg, ..., sizeof (Msg) } */
std::string entryText(const Module &module, const Entry &entry) {
    const auto function = [&](const std::string &prefix) {
        return "(ENTRYFUNC)" + prefix + entry.functions + ", ";
    };
    const std::vector<std::uint32_t> &tags = entry.place.tags;
    return "  { " + quoted(entry.place.name) + ", " + entry.kind + ", " +
           (tags.empty() ? "TAG_CHOICE" : std::to_string(tags.front()) + "u") + ", " +
           function(module.codingPrefix + "enc") + function(module.codingPrefix + "dec") +
           function("ask") + function("pri") + "sizeof (" + entry.value + ") },\n";
}

} // namespace

std::string programText(const Description &description) {
    Tables tables;
    for (const Type &type : description.types)
        addType(tables, type);
    std::string entries, modules, includes;
    for (std::size_t i = 0; i < description.modules.size(); ++i) {
        const Module &module = description.modules[i];
        const std::string number = std::to_string(i);
        std::string places, rows;
        for (const Entry &entry : module.entries) {
            places += placeText(tables, entry.place);
            rows += entryText(module, entry);
        }
        entries += table("ASNTOOLPLACE", "places" + number, module.entries.size(), places) +
                   table("ENTRYDESCR", "entries" + number, module.entries.size(), rows);
        modules += "  { " + quoted(module.name) + ", entries" + number + ", places" + number + ", " +
                   std::to_string(module.entries.size()) + " },\n";
        includes += "#include \"" + module.filePrefix + "cod.ext\"\n#include \"" +
                    module.filePrefix + "tst.ext\"\n";
    }
    return "/* What types are made of and what they are called, for the program of velmo-tool. */\n\n"
           "#include \"asntool.h\"\n" +
           includes + "\nstatic const ASNTOOLTYPE types [" +
           std::to_string(description.types.size()) + "];\n" +
           table("uint32", "tags", tables.nrOfTags, tables.tags) +
           table("ASNTOOLPLACE", "places", tables.nrOfPlaces, tables.places) +
           table("ASNTOOLNAME", "names", tables.nrOfNames, tables.names) +
           table("ASNTOOLTYPE", "types", description.types.size(), tables.types) + entries +
           "\nstatic const ASNTOOLMODULE modules [] = {\n" + modules +
           "  { NULL, NULL, NULL, 0 }\n};\n\n"
           "int main (int argc, char **argv)\n{\n  return asnToolMain (argc, argv, modules);\n}\n";
}

} // namespace tool
