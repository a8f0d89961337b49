#pragma once

#include "tests/support/treewriter.h"

/* Types that hold values as encodings, in an empty tree. */
void makeFrames(TreeWriter &w);
