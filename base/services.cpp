#include "base/services.h"

#include <algorithm>

#include "base/fatal.h"

namespace {

/* Where the extension of a file name begins, npos if it has none. */
std::size_t extensionOf(const Text &name) {
    const std::size_t dot = name.rfind('.');
    const std::size_t slash = name.rfind('/');
    const bool inName = dot != Text::npos && (slash == Text::npos || dot > slash);
    return inName ? dot : Text::npos;
}

} // namespace

Text &setFileName(Text &dst, const char *name, const char *suffix, bool replace) {
    Text base = orEmpty(name);
    const Text ending = orEmpty(suffix);
    if (replace) {
        base.resize(
            std::min(base.size(), MAX_PATH_LENGTH - std::min(MAX_PATH_LENGTH, ending.size())));
        if (const std::size_t dot = extensionOf(base); dot != Text::npos)
            base.resize(dot);
        base += ending;
    } else if (extensionOf(base) == Text::npos) {
        base += ending;
    }
    return dst = base;
}

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
