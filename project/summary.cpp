#include "project/summary.h"

#include <cstdio>
#include <cstdlib>

#include "project/taviconf.h"

namespace {

constexpr const char *SUMMARY_SUFFIX = ".acs";
constexpr int FATAL_EXIT_STATUS = 2;

std::FILE *summary = nullptr;
int openings = 0;

/* Options are checked before the run opens the file, so whoever writes opens it for himself. */
class OpenSummary {
public:
    OpenSummary() { taviSummaryOpenFile(); }
    ~OpenSummary() { taviSummaryCloseFile(); }
    OpenSummary(const OpenSummary &) = delete;
    OpenSummary &operator=(const OpenSummary &) = delete;
};

} // namespace

void taviSummaryOpenFile() {
    if (openings == 0)
        summary = taviOpenTextFile(SUMMARY_SUFFIX, "a");
    ++openings;
}

void taviSummaryCloseFile() {
    if (openings > 0 && --openings == 0)
        taviCloseTextFile(summary, SUMMARY_SUFFIX);
}

void taviSummaryMessage(const char *text) {
    const OpenSummary open;
    std::fprintf(summary, "%s\n", text);
}

void taviSummaryWarning(const char *directory, const char *file, std::int32_t line,
                        const char *title, const char *text) {
    const OpenSummary open;
    const Text message = orEmpty(text);
    std::fprintf(summary, "%s%s:%d: %s : %s%s", orEmpty(directory), orEmpty(file), line, title,
                 message.c_str(), message.ends_with('\n') ? "" : "\n");
}

void taviSummaryFatalError(const char *text, const char *detail) {
    static bool running = false;
    if (running)
        std::exit(FATAL_EXIT_STATUS);
    running = true;
    const OpenSummary open;
    std::fprintf(summary, "\nFATAL ERROR : %s\n", text);
    if (detail != nullptr)
        std::fprintf(summary, "              %s\n", detail);
    std::fputs("\n", summary);
}
