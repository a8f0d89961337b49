#pragma once

/* The operations on handles, by topic. */

#include "model/any.h"
#include "model/bounds.h"
#include "model/compwalk.h"
#include "model/constraints.h"
#include "model/endpointvalues.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/othermodule.h"
#include "model/stamps.h"
#include "model/tags.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typetables.h"
#include "model/typevalues.h"
#include "model/typewalk.h"
#include "model/valuequeries.h"
#include "model/valuesets.h"
#include "model/valuetexts.h"
#include "model/valuewalk.h"
