#pragma once

#include <cstdint>

/* The summary of a project: its warnings and fatal errors, run behind run. Call these while the
   outputs are active only. */

/* The file is open between the first call of one and the last of the other. */
void taviSummaryOpenFile();
void taviSummaryCloseFile();

/* A line. */
void taviSummaryMessage(const char *text);
/* "directory file:line: title : text" as a line; a null directory counts as empty. */
void taviSummaryWarning(const char *directory, const char *file, std::int32_t line,
                        const char *title, const char *text);
/* What fatalError says, `detail` being null or not. A fatal error in here ends the process. */
void taviSummaryFatalError(const char *text, const char *detail);

/* Titles of warnings. */
inline constexpr const char *SUMMARY_OPTION_IGNORED = "(W) Option ignored";
inline constexpr const char *SUMMARY_INTERNAL_ERROR = "(W) Internal error";
inline constexpr const char *SUMMARY_CIRCULAR_IMPORTS = "(W) Circular ASN.1 module imports.";
