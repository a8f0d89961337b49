#pragma once

struct AsnModule;

/* True if the module takes part in a circle of imports, or imports from a module that does. The
   answers for all modules are worked out together, once in a run. */
bool cIsCircularImports(AsnModule *module);
