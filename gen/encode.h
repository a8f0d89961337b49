#pragma once

struct AsnModule;

/* BER encoders: a value is written from its end to its start, so that each length is knownn   when
   its tag is written. They go to the files that the module's options opened; without one nothing is
   written. */
void generateEncodingFunctions(AsnModule *module);
