#pragma once

/* Outputs about a whole project, for people and tools that find their way from ASN.1 to generated
   C: a tree of all that was generated and where it stands, and a summary of warnings. They exist
   in runs with "TAVI-PREFIX=" only; without it every function here that generators call does
   nothing. */

#include "project/browser.h"      /* nodes, their tree and its file */
#include "project/browsernodes.h" /* nodes of definitions */
#include "project/items.h"        /* nodes of generated C items: what generators call */
#include "project/summary.h"      /* the summary file */
#include "project/taviconf.h"     /* options, names of the files */
