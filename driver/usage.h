#pragma once

/* The usage text of the tool, line by line, ended by a null entry. */
extern const char *const velmoUsage[];
