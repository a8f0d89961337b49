#pragma once

struct AsnModule;
struct AsnValue;

/* The module's values, as "#define" lines at the end of the ".def" file. */
void generateValues(AsnModule *module);

/* One line: "#define", the value's name, and the three texts (each may be null), never broken. The
   heading comes before the first one of a module. */
void genValue(AsnValue *value, const char *before, const char *text, const char *after);
