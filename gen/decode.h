#pragma once

struct AsnModule;

/* BER decoders: they look at the next tag before they decide what a value is. They go to the files
   that the module's options opened; without one nothing is written. */
void generateDecodingFunctions(AsnModule *module);
