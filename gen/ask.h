#pragma once

struct AsnModule;

/* Functions that fill a value by asking for it, component by component. They go to the files that
   the module's options opened; without one nothing is written. */
void generateAskingFunctions(AsnModule *module);
