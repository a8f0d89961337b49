#include "base/services.h"

#include <algorithm>

#include "base/fatal.h"

namespace {

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
