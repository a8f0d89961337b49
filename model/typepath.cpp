#include "model/typepath.h"

#include <cstring>
#include <memory>
#include <vector>

#include "base/fatal.h"

namespace {

struct TPath {
    char text[MAX_TYPE_PATH + 1] = {};
    std::size_t length = 0;
    std::vector<std::size_t> elemStarts; /* offset of each element in the text */
};

/* Handles keep pointers to the text of the path that was current when they were made, and may be
   asked for it after that path was dropped. So dropped paths stay allocated behind the top and are
   taken into use again by the next push. */
std::vector<std::unique_ptr<TPath>> tPathStack;
std::size_t tPathDepth = 0;

TPath &tPathTop() {
    if (tPathDepth == 0)
        fatalError(FATAL_INTERNAL, "Empty type name path stack");
    return *tPathStack[tPathDepth - 1];
}

} // namespace

/* A path is pushed for each nested walk. A popped one stays where it is until the next push,
   since handles made meanwhile still show its text. */

void pushPath() {
    if (tPathDepth == tPathStack.size())
        tPathStack.push_back(std::make_unique<TPath>());
    TPath &path = *tPathStack[tPathDepth++];
    path.text[0] = '\0';
    path.length = 0;
    path.elemStarts.clear();
}

void popPath() {
    tPathTop();
    --tPathDepth;
}

void resetPath() {
    tPathDepth = 0;
}

void addElemToPath(const char *text) {
    TPath &path = tPathTop();
    const std::size_t length = std::strlen(text);
    if (length + path.length > MAX_TYPE_PATH)
        fatalError(FATAL_INTERNAL, "Type name path buffer overflow");
    path.elemStarts.push_back(path.length);
    std::memcpy(path.text + path.length, text, length + 1);
    path.length += length;
}

void removeElemFromPath() {
    TPath &path = tPathTop();
    if (path.elemStarts.empty())
        fatalError(FATAL_INTERNAL, "Corrupted type name element stack");
    path.length = path.elemStarts.back();
    path.elemStarts.pop_back();
    path.text[path.length] = '\0';
}

const char *getPath() {
    return tPathTop().text;
}

bool typePathInUse() {
    return tPathDepth > 0;
}
