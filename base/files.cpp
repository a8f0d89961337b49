#include "base/files.h"

#include <algorithm>

#include "base/fatal.h"

FileSlot fArr[FILE_SLOTS];

namespace {

/* The last column that a line may fill where it can be broken. */
constexpr std::size_t LINE_LENGTH = 78;
constexpr int BLANKS_PER_LEVEL = 2;
/* A piece of at most so many characters, such as ");", never starts a line of its own. */
constexpr std::size_t STICKY_LENGTH = 2;
/* Texts are handed to the system in pieces of this size. */
constexpr std::size_t BLOCK_SIZE = 32768;

Text pathOf(int slot) {
    const FileSlot &file = fArr[slot];
    return file.directory + file.prefix + file.suffix;
}

[[noreturn]] void writeFailed(int slot) {
    fatalError(FATAL_WRITE, pathOf(slot).c_str());
}

/* False if not all of it could be written; it is forgotten in any case. */
bool writePending(FileSlot *file) {
    const std::size_t filled = std::exchange(file->filled, 0);
    const bool written = std::fwrite(file->pending.data(), 1, filled, file->stream) == filled;
    return written && std::fflush(file->stream) == 0;
}

/* Appends to what is pending, whose memory is kept from piece to piece. */
void append(FileSlot *file, std::size_t blanks, std::string_view text) {
    const std::size_t filled = file->filled + blanks + text.size();
    if (filled > file->pending.size())
        file->pending.resize(filled + BLOCK_SIZE);
    char *place = file->pending.data() + file->filled;
    std::copy(text.begin(), text.end(), std::fill_n(place, blanks, ' '));
    file->filled = filled;
}

/* True if a piece of `len` characters has to go on a line of its own. */
bool needsBreak(const FileSlot &file, std::size_t len) {
    auto column = static_cast<std::size_t>(file.columns);
    return file.columns > (file.indent + 1) * BLANKS_PER_LEVEL && len > STICKY_LENGTH &&
           column + len > LINE_LENGTH;
}

std::size_t indentation(const FileSlot &file) {
    return static_cast<std::size_t>(file.indent) * BLANKS_PER_LEVEL;
}

/* True if the piece that `pending` holds from `begin` on may stay as it is: it isn't empty, has no
   line end but its last character, and goes on in the line that it was put into. */
bool fitsLine(const FileSlot &file, std::size_t begin, bool noBreak) {
    const std::string_view piece(file.pending.data() + begin, file.filled - begin);
    const std::size_t end = std::min(piece.find('\n'), piece.size());
    return !piece.empty() && end + 1 >= piece.size() &&
           (file.columns == 0 || noBreak || !needsBreak(file, end));
}

/* A piece of several lines, or one that may have to begin a line of its own. */
void writeLines(FileSlot *file, std::string_view text, bool noBreak) {
    while (!text.empty()) {
        std::size_t len = std::min(text.find('\n'), text.size());
        std::size_t blanks = 0;
        if (file->columns == 0) {
            blanks = indentation(*file);
        } else if (!noBreak && needsBreak(*file, len)) {
            ++file->lines;
            file->columns = 0;
            append(file, 0, "\n");
            for (; len > 0 && text.front() == ' '; --len)
                text.remove_prefix(1);
            blanks = indentation(*file) + BLANKS_PER_LEVEL;
        }
        if (len < text.size()) {
            ++file->lines;
            file->columns = 0;
            ++len;
        } else {
            file->columns += static_cast<int>(blanks + len);
        }
        append(file, blanks, text.substr(0, len));
        text.remove_prefix(len);
    }
}

void startStream(int slot, const Text &name) {
    FileSlot &file = fArr[slot];
    file.stream = fopenTextFile(file.directory.c_str(), name.c_str(), "w");
    file.lines = 0;
    file.columns = 0;
    file.indent = 0;
}

Text guardName(const Text &fileName) {
    Text name = strUpper(convertHyphens(fileName));
    for (char &c : name)
        if (!isSymbolChar(c))
            c = '_';
    if (!name.empty() && isAsciiDigit(name.front()))
        name.insert(0, 1, '_');
    return name;
}

bool hasWholeName(int slot) {
    return slot != 0 && fArr[slot].named && fArr[slot].hasPrefix;
}

} // namespace

std::FILE *fopenTextFile(const char *directory, const char *name, const char *mode) {
    const int code = mode[0] == 'r' ? FATAL_OPEN_READ : FATAL_OPEN_WRITE;
    const Text path = Text(orEmpty(directory)) + orEmpty(name);
    if (path.size() > MAX_PATH_LENGTH)
        fatalError(code, nullptr);
    std::FILE *file = std::fopen(path.c_str(), mode);
    if (file == nullptr)
        fatalError(code, path.c_str());
    return file;
}

void initFiles() {
    for (FileSlot &file : fArr)
        file = FileSlot();
}

void initF(int slot, const char *directory, const char *suffix) {
    if (slot == 0 || suffix == nullptr)
        return;
    FileSlot &file = fArr[slot];
    file.directory = orEmpty(directory);
    file.suffix = suffix;
    file.named = true;
}

bool isFilePrefix(std::string_view prefix) {
    return std::none_of(prefix.begin(), prefix.end(), [](char c) {
        return c == '/' || c == '\\' || c == '"' || static_cast<unsigned char>(c) < ' ' ||
               c == '\x7F';
    });
}

void openFWithPrefix(int slot, const char *prefix) {
    if (slot == 0 || !fArr[slot].named || fArr[slot].stream != nullptr)
        return;
    FileSlot &file = fArr[slot];
    file.prefix = orEmpty(prefix);
    file.hasPrefix = true;
    /* A prefix may come from a tree. The directories are the user's choice alone. */
    if (!isFilePrefix(file.prefix))
        fatalError(FATAL_OPEN_WRITE, ("Not a valid file prefix: " + file.prefix).c_str());
    startStream(slot, file.prefix + file.suffix);
}

void closeF(int slot) {
    if (slot == 0 || fArr[slot].stream == nullptr)
        return;
    if (!writePending(&fArr[slot]))
        writeFailed(slot);
    std::FILE *stream = fArr[slot].stream;
    fArr[slot].stream = nullptr;
    if (std::fclose(stream) != 0)
        fatalError(FATAL_CLOSE, pathOf(slot).c_str());
}

void writeOpenFiles() {
    forEachOpenFile([](int slot) { writePending(&fArr[slot]); });
}

Text nameOfF(int slot) {
    return hasWholeName(slot) ? pathOf(slot) : "";
}

Text nameOfFnoDir(int slot) {
    return hasWholeName(slot) ? fArr[slot].prefix + fArr[slot].suffix : "";
}

Text dirOfF(int slot) {
    return slot != 0 && fArr[slot].named ? fArr[slot].directory : "";
}

Text defineGuardOfF(int slot) {
    return guardName(nameOfFnoDir(slot));
}

Text defineGuardForFile(const char *name) {
    return guardName(orEmpty(name));
}

void writePiece(int slot, std::initializer_list<Part> parts, bool noBreak) {
    if (slot == 0)
        return;
    FileSlot &file = fArr[slot];
    if (file.stream == nullptr)
        fatalError(FATAL_INTERNAL, "Write to a file that is not open.");
    file.indent = std::max(file.indent, 0);
    const std::size_t before = file.filled;
    const std::size_t blanks = file.columns == 0 ? indentation(file) : 0;
    append(&file, blanks, {});
    for (const Part &part : parts)
        append(&file, 0, part.view());
    if (!fitsLine(file, before + blanks, noBreak)) {
        static Text piece; /* kept for its memory */
        piece.assign(file.pending, before + blanks, file.filled - before - blanks);
        file.filled = before;
        writeLines(&file, piece, noBreak);
    } else if (file.pending[file.filled - 1] == '\n') {
        ++file.lines;
        file.columns = 0;
    } else {
        file.columns += static_cast<int>(file.filled - before);
    }
    if (file.filled >= BLOCK_SIZE && !writePending(&file))
        writeFailed(slot);
}

std::uint32_t linesInF(int slot) {
    return slot == 0 || fArr[slot].stream == nullptr ? 0 : fArr[slot].lines;
}

int columnsInF(int slot) {
    return slot == 0 || fArr[slot].stream == nullptr ? 0 : fArr[slot].columns;
}

void resetIndentLevel(int slot) {
    if (slot != 0)
        fArr[slot].indent = 0;
}
