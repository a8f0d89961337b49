#include "show/writer.h"

#include <cstdio>

namespace {

constexpr std::size_t LINE_LENGTH = 100;
constexpr int STEP = 4;
bool isBegun = false;

Text printable(Text text) {
    for (char &c : text)
        if (c < ' ' || c > '~')
            c = '?';
    return text;
}

/* Characters of `text` that fit into `room`: up to the last blank behind "," or "|" that is in no
   string. All of it if there is none. */
std::size_t lengthThatFits(std::string_view text, std::size_t room) {
    if (text.size() <= room)
        return text.size();
    bool quoted = false;
    std::size_t place = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (i > room && place != 0)
            return place;
        if (text[i] == '"')
            quoted = !quoted;
        if (!quoted && text[i] == ' ' && (text[i - 1] == ',' || text[i - 1] == '|'))
            place = i;
    }
    return place == 0 || text.size() <= room ? text.size() : place;
}

void writeLines(int level, const char *mark, const Text &content) {
    const Text text = printable(content);
    isBegun = true;
    std::string_view rest = text;
    int indent = STEP * level;
    do {
        const std::size_t used = static_cast<std::size_t>(indent) + std::string_view(mark).size();
        const std::size_t room = used < LINE_LENGTH ? LINE_LENGTH - used : 1;
        const std::size_t length = lengthThatFits(rest, room);
        std::printf("%*s%s%.*s\n", indent, "", mark, static_cast<int>(length), rest.data());
        rest.remove_prefix(length);
        rest = remSpaces(rest);
        indent = STEP * (level + 1);
    } while (!rest.empty());
}

} // namespace

void showLine(int level, const Text &text) {
    writeLines(level, "", text);
}

void showFact(int level, const Text &text) {
    writeLines(level, "-- ", text);
}

void showEmptyLine() {
    if (isBegun)
        std::putchar('\n');
}

void addPart(Text &list, const Text &part) {
    if (!part.empty())
        list.append(list.empty() ? "" : ", ").append(part);
}
