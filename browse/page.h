#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "browse/project.h"

namespace browse {

/* A file of the project. */
struct SourceText {
    std::string text;
    std::string error; /* why there is no text; empty if it was read */
};

/* Writes the page of the project, whose files are `texts`. It needs nothing but itself: no texts
   become markup, whatever is in them. Whether it could be written, the stream tells. */
void writePage(const Project &project, const std::vector<SourceText> &texts, std::FILE *out);

} // namespace browse
