#pragma once

struct AsnModule;

/* Functions that show a value, component by component. They go to the files that
   the module's options opened; without one nothing is written. */
void generatePrintingFunctions(AsnModule *module);
