#include "browse/project.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <string_view>

namespace browse {

namespace {

/* What a fatal error tells in detail stands on a line of its own, behind so many blanks. */
constexpr std::string_view DETAIL = "              ";

/* The number of the file that the line begins with, if it is "file:line: text"; the text is what
   remains of the line then. */
int takePlace(const std::map<std::string_view, int> &files, std::string_view &line,
              std::int32_t &number) {
    for (std::size_t colon = line.find(':'); colon != line.npos;
         colon = line.find(':', colon + 1)) {
        const auto file = files.find(line.substr(0, colon));
        if (file == files.end())
            continue;
        const char *const end = line.data() + line.size();
        const auto [behind, failure] = std::from_chars(line.data() + colon + 1, end, number);
        const std::string_view text(behind, static_cast<std::size_t>(end - behind));
        if (failure == std::errc() && number >= 0 && text.starts_with(": ")) {
            line = text.substr(2);
            return file->second;
        }
    }
    number = 0;
    return NO_FILE;
}

} // namespace

void readSummary(const std::string &text, Project &project) {
    std::map<std::string_view, int> files;
    for (std::size_t i = 0; i < project.files.size(); ++i)
        files.emplace(project.files[i], static_cast<int>(i));
    std::vector<Message> all;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::string_view line(text.data() + begin, end - begin);
        begin = end + 1;
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (line.starts_with(DETAIL) && !all.empty()) {
            all.back().text += " : " + std::string(line.substr(DETAIL.size()));
        } else if (!line.empty()) {
            Message message;
            message.file = takePlace(files, line, message.line);
            message.text = line;
            all.push_back(std::move(message));
        }
    }
    std::map<std::pair<std::pair<int, std::int32_t>, std::string>, std::size_t> known;
    for (Message &message : all) {
        const auto [place, isNew] =
            known.emplace(std::make_pair(std::make_pair(message.file, message.line), message.text),
                          project.messages.size());
        if (isNew)
            project.messages.push_back(std::move(message));
        else
            ++project.messages[place->second].count;
    }
}

} // namespace browse
