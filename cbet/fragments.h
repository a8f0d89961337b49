#pragma once

/* The small fixed pieces of generated C, by subject. None decides anything about the walk. */

#include "cbet/comptests.h"
#include "cbet/listloops.h"
#include "cbet/listsizes.h"
#include "cbet/memory.h"
#include "cbet/reports.h"
