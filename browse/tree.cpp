#include "browse/project.h"

#include <charconv>
#include <string_view>
#include <unordered_map>

namespace browse {

namespace {

/* Texts that come again and again get numbers. */
struct Numbering {
    std::unordered_map<std::string, int> numbers;

    int of(std::string_view text, std::vector<std::string> &texts) {
        const auto [place, isNew] = numbers.emplace(text, static_cast<int>(texts.size()));
        if (isNew)
            texts.emplace_back(text);
        return place->second;
    }
};

struct TreeReader {
    Project &project;
    Numbering files, kinds;
};

template <typename Number> bool takeNumber(std::string_view &rest, Number &number) {
    const auto [end, failure] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (failure != std::errc() || number > static_cast<Number>(INT32_MAX))
        return false;
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    return true;
}

bool takeText(std::string_view &rest, std::string_view text) {
    if (!rest.starts_with(text))
        return false;
    rest.remove_prefix(text.size());
    return true;
}

/* "'file':line:", where the name of the file may have quotes and colons itself. */
bool takePlace(std::string_view &rest, std::string_view &file, std::int32_t &line) {
    if (!takeText(rest, "'"))
        return false;
    for (std::size_t end = rest.find("':"); end != rest.npos; end = rest.find("':", end + 1)) {
        std::string_view behind = rest.substr(end + 2);
        if (takeNumber(behind, line) && line >= 0 && takeText(behind, ":")) {
            file = rest.substr(0, end);
            rest = behind;
            return true;
        }
    }
    return false;
}

/* "level:name:'file':line:kind:aux1:aux2" */
bool readNode(TreeReader &reader, std::string_view rest) {
    Node node;
    std::string_view file;
    if (!takeNumber(rest, node.level) || !takeText(rest, ":"))
        return false;
    const std::size_t nameEnd = rest.find(":'");
    if (nameEnd == rest.npos)
        return false;
    node.name = rest.substr(0, nameEnd);
    rest.remove_prefix(nameEnd + 1);
    if (!takePlace(rest, file, node.line))
        return false;
    const std::size_t kindEnd = rest.find(':');
    if (kindEnd == rest.npos || rest.find(':', kindEnd + 1) == rest.npos)
        return false;
    node.kind = reader.kinds.of(rest.substr(0, kindEnd), reader.project.kinds);
    node.file = file.empty() ? NO_FILE : reader.files.of(file, reader.project.files);
    std::vector<Node> &nodes = reader.project.nodes;
    if (nodes.empty() ? node.level != 0 : node.level < 1 || node.level > nodes.back().level + 1)
        return false;
    nodes.push_back(std::move(node));
    return true;
}

} // namespace

bool readTree(const std::string &text, Project &project, std::string &error) {
    TreeReader reader{project, {}, {}};
    std::size_t number = 1;
    for (std::size_t begin = 0; begin < text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::string_view line(text.data() + begin, end - begin);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (!readNode(reader, line)) {
            error = std::to_string(number) + ": this is no line of a browser tree";
            return false;
        }
        begin = end + 1;
    }
    if (project.nodes.empty()) {
        error = "1: there is nothing in this browser tree";
        return false;
    }
    project.name = project.nodes.front().name;
    return true;
}

} // namespace browse
