#include "asntree/diagnostics.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <tuple>

#include "base/text.h"

namespace asntree {

namespace {

/* A line is shown in a window of this many columns, with the caret in it. */
constexpr std::size_t WINDOW = 120;
constexpr std::size_t TAB_WIDTH = 8;

struct Palette {
    const char *place = "";
    const char *severity[3] = {"", "", ""}; /* by `Severity` */
    const char *caret = "";
    const char *off = "";
};
constexpr Palette PLAIN;
constexpr Palette COLORS{
    "\033[1m", {"\033[1;31m", "\033[1;35m", "\033[1;36m"}, "\033[1;32m", "\033[0m"};

constexpr const char *severityText[] = {"error: ", "warning: ", "note: "};

std::uint64_t hashOf(Place place, int kind, std::string_view text) {
    const auto where = (std::uint64_t{place.file} << 32 | place.offset) + 1;
    return (where * 4 + static_cast<unsigned>(kind)) * 0x9E3779B97F4A7C15u ^
           std::hash<std::string_view>{}(text);
}

/* False if it was said before. The text of an error counts only where there is no place. */
bool isNew(Diagnostics &diagnostics, const Diagnostic &message) {
    const bool placeAlone = message.severity == Severity::Error && message.place.known();
    const std::string_view text = placeAlone ? std::string_view() : message.text;
    const int kind = static_cast<int>(message.severity);
    return diagnostics.seen.insert(hashOf(message.place, kind, text)).second;
}

void add(Diagnostics &diagnostics, Diagnostic message) {
    if (!isNew(diagnostics, message))
        return;
    if (message.severity != Severity::Note) {
        int &count =
            message.severity == Severity::Error ? diagnostics.errors : diagnostics.warnings;
        if (++count > Diagnostics::MAX_KEPT)
            return;
    }
    diagnostics.list.push_back(std::move(message));
}

std::size_t octetsOfCharacter(std::string_view line, std::size_t at) {
    std::size_t end = at + 1;
    while (end < line.size() && (static_cast<unsigned char>(line[end]) & 0xC0) == 0x80 &&
           end - at < 4)
        ++end;
    return end - at;
}

/* True if the octets at `at` are one character of UTF-8 that takes a column of a terminal. */
bool isPrintable(std::string_view character) {
    const auto first = static_cast<unsigned char>(character[0]);
    if (first < 0x80)
        return first >= 0x20 && first != 0x7F;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || character.size() != length)
        return false;
    return first != 0xC2 || static_cast<unsigned char>(character[1]) >= 0xA0; /* C1 controls */
}

/* Cuts the octets of `line` that can't matter from its ends, at the starts of characters; `caret`
   (an offset) moves along. */
std::string_view cutLine(std::string_view line, std::size_t &caret) {
    constexpr std::size_t REACH = 4 * WINDOW;
    const auto continues = [&](std::size_t at) {
        return at < line.size() && (static_cast<unsigned char>(line[at]) & 0xC0) == 0x80;
    };
    std::size_t begin = caret > REACH ? caret - REACH : 0;
    for (int i = 0; i < 3 && continues(begin); ++i)
        ++begin;
    const std::size_t end = std::min(line.size(), caret + REACH);
    caret -= begin;
    return line.substr(begin, end - begin);
}

/* A line as a terminal shows it, a string a column. */
struct Columns {
    std::vector<std::string> cells;
    std::size_t caret = 0;
};

Columns columnsOf(std::string_view line, std::size_t caret) {
    Columns columns;
    std::size_t at = 0;
    while (at < line.size()) {
        const std::string_view character = line.substr(at, octetsOfCharacter(line, at));
        if (at <= caret)
            columns.caret = columns.cells.size();
        if (character == "\t")
            columns.cells.resize(columns.cells.size() / TAB_WIDTH * TAB_WIDTH + TAB_WIDTH, " ");
        else
            columns.cells.emplace_back(isPrintable(character) ? character : "?");
        at += character.size();
    }
    if (caret >= line.size())
        columns.caret = columns.cells.size();
    return columns;
}

/* The line of a place, and a caret under it. */
void appendLine(std::string &text, SourceFile &file, std::uint32_t offset, const Palette &palette) {
    const LineColumn place = lineAndColumn(file, offset);
    const std::string_view whole = lineText(file, place.line);
    std::size_t caret =
        std::min<std::size_t>(offset - file.lineStarts[place.line - 1], whole.size());
    const std::string_view line = cutLine(whole, caret);
    const Columns columns = columnsOf(line, caret);
    const std::size_t count = columns.cells.size();
    std::size_t begin = 0;
    if (columns.caret >= WINDOW || line.data() != whole.data())
        begin = columns.caret - std::min(columns.caret, WINDOW * 2 / 3);
    const std::size_t end = std::min(count, begin + WINDOW);
    const bool cutInFront = begin > 0 || line.data() != whole.data();
    const bool cutBehind = end < count || line.data() + line.size() < whole.data() + whole.size();
    text += "    ";
    if (cutInFront)
        text += "... ";
    for (std::size_t at = begin; at < end; ++at)
        text += columns.cells[at];
    if (cutBehind)
        text += " ...";
    while (text.back() == ' ')
        text.pop_back();
    text += '\n';
    text.append(4 + (cutInFront ? 4 : 0) + columns.caret - begin, ' ');
    (((text += palette.caret) += '^') += palette.off) += '\n';
}

void appendMessage(std::string &text, Diagnostics &diagnostics, Severity severity, Place place,
                   const std::string &message, const Palette &palette) {
    const auto which = static_cast<std::size_t>(severity);
    text += palette.place;
    if (place.known()) {
        SourceFile &file = diagnostics.sources[place.file];
        const LineColumn where = lineAndColumn(file, place.offset);
        text += file.path + ':' + std::to_string(where.line) + ':' + std::to_string(where.column);
    } else {
        text += "asntree";
    }
    ((((text += ": ") += palette.off) += palette.severity[which]) += severityText[which]) +=
        palette.off;
    text += message + '\n';
    if (place.known())
        appendLine(text, diagnostics.sources[place.file], place.offset, palette);
}

void appendRest(std::string &text, int all, int shown, const char *what) {
    if (all > shown)
        text += formatText("asntree: %d more %s%s not shown\n", all - shown, what,
                           all - shown == 1 ? " is" : "s are");
}

char lowerCase(char c) {
    return isAsciiUpper(c) ? static_cast<char>(c + ('a' - 'A')) : c;
}

/* How many letters must change, come or go to make `a` of `b`; more than `limit` if more than that.
   A letter that only differs in case is as good as equal. */
std::size_t editDistance(std::string_view a, std::string_view b, std::size_t limit) {
    std::array<std::size_t, 65> row;
    std::iota(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(b.size()) + 1, 0u);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        std::size_t least = row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t change = diagonal + (lowerCase(a[i]) == lowerCase(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({change, diagonal + 1, row[j] + 1});
            least = std::min(least, row[j + 1]);
        }
        if (least > limit)
            return limit + 1;
    }
    return row[b.size()];
}

} // namespace

void error(Diagnostics &diagnostics, Place place, std::string text, std::vector<Remark> remarks) {
    add(diagnostics, {Severity::Error, place, std::move(text), std::move(remarks)});
}

void warning(Diagnostics &diagnostics, Place place, std::string text, std::vector<Remark> remarks) {
    const Severity severity = diagnostics.warningsAreErrors ? Severity::Error : Severity::Warning;
    add(diagnostics, {severity, place, std::move(text), std::move(remarks)});
}

void note(Diagnostics &diagnostics, Place place, std::string text, bool shown) {
    add(diagnostics, {Severity::Note, place, std::move(text), {}, shown});
}

void slip(Diagnostics &diagnostics, Place place, std::string text) {
    if (diagnostics.strict)
        error(diagnostics, place, std::move(text));
    else
        warning(diagnostics, place, std::move(text));
}

std::string printed(Diagnostics &diagnostics, bool color) {
    std::vector<const Diagnostic *> order;
    for (const Diagnostic &message : diagnostics.list)
        if (message.shown)
            order.push_back(&message);
    std::stable_sort(order.begin(), order.end(), [](const Diagnostic *a, const Diagnostic *b) {
        const auto key = [](Place place) {
            return std::tuple(place.known(), place.file, place.offset);
        };
        return key(a->place) < key(b->place);
    });
    const Palette &palette = color ? COLORS : PLAIN;
    std::string text;
    int errors = 0;
    int warnings = 0;
    for (const Diagnostic *message : order) {
        if (message->severity == Severity::Error && ++errors > Diagnostics::MAX_ERRORS)
            continue;
        if (message->severity == Severity::Warning && ++warnings > Diagnostics::MAX_WARNINGS)
            continue;
        appendMessage(text, diagnostics, message->severity, message->place, message->text, palette);
        for (const Remark &remark : message->remarks)
            appendMessage(text, diagnostics, Severity::Note, remark.place, remark.text, palette);
    }
    appendRest(text, diagnostics.errors, std::min(errors, Diagnostics::MAX_ERRORS), "error");
    appendRest(text, diagnostics.warnings, std::min(warnings, Diagnostics::MAX_WARNINGS),
               "warning");
    return text;
}

std::string_view nearestName(std::string_view name,
                             const std::vector<std::string_view> &candidates) {
    constexpr std::size_t LONGEST = 64;
    std::string_view nearest;
    std::size_t least = name.size() / 3 + 1;
    for (const std::string_view candidate : candidates) {
        const std::size_t shorter = std::min(name.size(), candidate.size());
        const std::size_t longer = std::max(name.size(), candidate.size());
        const std::size_t most = nearest.empty() ? least - 1 : least;
        if (longer > LONGEST || longer - shorter > most || candidate == name)
            continue;
        const std::size_t distance = editDistance(name, candidate, most);
        if (distance <= most && (distance < least || candidate < nearest)) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace asntree
