#pragma once

#include "base/call.h"
#include "model/backend.h"

/* The whole graph of imports below a module. */

/* Visits each module that `module` imports from, directly or through others, once: behind the
   modules that it imports from itself, and in the order of the imports. As forEachExportingModule
   does, it passes over the predefined module and imports that are not followed, and sets cMP for
   each call. `descends` says whether the imports of a module count too; null means that all do. The
   depth of the graph costs no stack. */
void forEachExporterFirst(AsnModule *module, Call<bool(AsnModule *exporter)> descends,
                          Call<void(AsnModule *exporter)> func);
