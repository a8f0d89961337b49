#include <utility>

#include "asntree/optionparts.h"
#include "asntree/words.h"
#include "base/text.h"
#include "options/cmdline.h"

namespace asntree {

namespace {

bool begins(std::string_view line, std::string_view word) {
    return strnCaseComp(std::string(line.substr(0, word.size())).c_str(), word.data(),
                        word.size()) == 0;
}

/* "@Module.Type.component words" */
void takeDirectiveLine(OptionReader &reader, const SourceFile &file, std::string_view line) {
    PathDirective directive;
    std::size_t length = 0;
    if (!readModulePath(line.substr(1), directive.path, length)) {
        refuse(reader, "\"@\" must be followed by a path Module.Type or Module.Type.component");
        return;
    }
    const std::string_view words = remSpaces(line.substr(1 + length));
    if (words.empty()) {
        warn(reader, "no words follow the path " + std::string(line));
        return;
    }
    const char *begin = file.text.data();
    directive.file = file.number;
    directive.pathOffset = static_cast<std::uint32_t>(line.data() + 1 - begin);
    directive.wordsOffset = static_cast<std::uint32_t>(words.data() - begin);
    directive.words = words;
    reader.settings.directives.push_back(std::move(directive));
}

bool beginsPath(std::string_view line) {
    return isAsciiAlnum(line[0]) || line[0] == '_' || line[0] == '/' || line.starts_with("./") ||
           line.starts_with("../");
}

/* `ended`: only files are read behind "-END-OF-OPTIONS". */
void takeLine(OptionReader &reader, const SourceFile &file, std::string_view line, bool &ended) {
    if (line.empty() || isOptionComment(std::string(line)))
        return;
    if (beginsPath(line)) {
        reader.settings.files.emplace_back(line);
        return;
    }
    ended = ended || begins(line, "-END-OF-OPTIONS");
    if (ended)
        return;
    if (line[0] == '@')
        takeDirectiveLine(reader, file, line);
    else if (line[0] == '-')
        takeOption(reader, line);
    else
        warn(reader,
             "neither an option, nor a file, nor a comment: " + std::string(line.substr(0, 40)));
}

} // namespace

void readOptionFile(OptionReader &reader, const std::string &path) {
    std::string why = "no file is named behind \"+\"";
    SourceFile *file = path.empty() ? nullptr : readSource(reader.settings.optionFiles, path, why);
    if (file == nullptr) {
        refuse(reader, "can't read the option file " + path + ": " + why);
        return;
    }
    const std::string outer = std::exchange(reader.where, std::string());
    const ScopeNr outerScope = std::exchange(reader.scope, 0);
    const bool outerInScope = std::exchange(reader.inScope, false);
    const std::string_view text = file->text;
    bool ended = false;
    std::size_t at = 0;
    for (int number = 1; at < text.size(); ++number) {
        std::size_t end = std::min(text.find_first_of("\n\r", at), text.size());
        reader.where = path + ":" + std::to_string(number) + ": ";
        takeLine(reader, *file, remSpaces(text.substr(at, end - at)), ended);
        at = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
    }
    if (reader.inScope)
        warn(reader, "-END-SCOPE is missing");
    reader.where = outer;
    reader.scope = outerScope;
    reader.inScope = outerInScope;
}

} // namespace asntree
