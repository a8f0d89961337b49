#include "asntree/source.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

namespace asntree {

namespace {

constexpr std::size_t MAX_SOURCE_SIZE = std::size_t{1} << 30;

/* Where lines begin: behind LF, CR and CR LF, as editors count them. */
void findLines(SourceFile &file) {
    const std::string_view text = file.text;
    file.lineStarts.push_back(0);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\n' && text[at] != '\r')
            continue;
        if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n')
            ++at;
        file.lineStarts.push_back(static_cast<std::uint32_t>(at + 1));
    }
}

bool readAll(std::FILE *stream, std::size_t expected, std::string &text, std::string &why) {
    constexpr std::size_t PIECE = 1 << 16;
    text.reserve(std::min(expected, MAX_SOURCE_SIZE) + PIECE);
    for (;;) {
        const std::size_t used = text.size();
        if (used > MAX_SOURCE_SIZE) {
            why = "it has more than 1 GiB";
            return false;
        }
        text.resize(used + PIECE);
        const std::size_t count = std::fread(text.data() + used, 1, PIECE, stream);
        text.resize(used + count);
        if (count == 0)
            break;
    }
    if (std::ferror(stream) != 0) {
        why = std::strerror(errno);
        return false;
    }
    text.shrink_to_fit();
    return true;
}

} // namespace

SourceFile *readSource(Sources &sources, const std::string &path, std::string &why) {
    std::FILE *stream = std::fopen(path.c_str(), "rb");
    if (stream == nullptr) {
        why = std::strerror(errno);
        return nullptr;
    }
    struct stat state {};
    if (fstat(fileno(stream), &state) != 0)
        state = {};
    std::string text;
    const auto size = static_cast<std::size_t>(std::max<off_t>(state.st_size, 0));
    const bool read = readAll(stream, S_ISREG(state.st_mode) ? size : 0, text, why);
    std::fclose(stream);
    if (!read)
        return nullptr;
    SourceFile *file = addSource(sources, path, std::move(text));
    file->modified = static_cast<std::int64_t>(state.st_mtime);
    return file;
}

SourceFile *addSource(Sources &sources, std::string path, std::string text) {
    SourceFile &file = sources.files.emplace_back();
    file.number = static_cast<std::uint32_t>(sources.files.size() - 1);
    file.path = std::move(path);
    file.text = std::move(text);
    if (file.text.starts_with("\xEF\xBB\xBF"))
        file.text.erase(0, 3);
    return &file;
}

LineColumn lineAndColumn(SourceFile &file, std::uint32_t offset) {
    if (file.lineStarts.empty())
        findLines(file);
    offset = std::min(offset, static_cast<std::uint32_t>(file.text.size()));
    const auto behind = std::upper_bound(file.lineStarts.begin(), file.lineStarts.end(), offset);
    LineColumn place;
    place.line = static_cast<std::uint32_t>(behind - file.lineStarts.begin());
    std::uint32_t at = *(behind - 1);
    if (at <= file.countedOffset && file.countedOffset <= offset) {
        at = file.countedOffset;
        place.column = file.countedColumn;
    }
    for (; at < offset; ++at)
        if ((static_cast<unsigned char>(file.text[at]) & 0xC0) != 0x80)
            ++place.column;
    file.countedOffset = offset;
    file.countedColumn = place.column;
    return place;
}

std::string_view lineText(SourceFile &file, std::uint32_t line) {
    if (file.lineStarts.empty())
        findLines(file);
    if (line == 0 || line > file.lineStarts.size())
        return {};
    const std::string_view text = file.text;
    const std::size_t begin = file.lineStarts[line - 1];
    std::size_t end = line < file.lineStarts.size() ? file.lineStarts[line] : text.size();
    while (end > begin && (text[end - 1] == '\n' || text[end - 1] == '\r'))
        --end;
    return text.substr(begin, end - begin);
}

} // namespace asntree
