#pragma once

/* The operations on handles, by topic. */

#include "model/any.h"
#include "model/bounds.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/othermodule.h"
#include "model/stamps.h"
#include "model/tags.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typetables.h"
#include "model/typewalk.h"
