#pragma once

struct AsnModule;

/* What a module gets, in the order in which it is written. All text goes to the files that the
   module's options opened (fileset.h); without one nothing is written. */

/* C types: one definition in the ".typ" file for each type of a module that is to be generated,
   then one for each class. A definition stands behind those of all that it needs. Fatal error 15
   for definitions that nest without end. */
void generateTypes(AsnModule *module);

/* BER encoders: a value is written from its end to its start, so that each length is known when its
   tag is written. */
void generateEncodingFunctions(AsnModule *module);
/* BER decoders: they look at the next tag before they decide what a value is. */
void generateDecodingFunctions(AsnModule *module);
/* Functions that fill a value by asking for it, component by component. */
void generateAskingFunctions(AsnModule *module);
/* Functions that show a value, component by component. */
void generatePrintingFunctions(AsnModule *module);

/* The entry table, through which a program reaches an entry type by number, and those of values,
   objects and sets. They come after the coding functions, because a row names those that exist. */
void generateTables(AsnModule *module);

/* The module's values, as "#define" lines at the end of the ".def" file. */
void generateValues(AsnModule *module);
