#pragma once

struct AsnObjClass;
struct AsnType;
struct BEClassMetaRec;
struct BEModMetaRec;
struct BETypMetaRec;

/* The options that belong to this generator alone. An option's text begins with a character that
   has no meaning; "BEO=" and a tool's name may follow, and then the option is for that tool.

   Each function stores the value and returns true if the option is valid, or meant for another
   tool; otherwise it changes nothing. */

/* An option of a module. "VERSION" prints the version block and ends the run with exit status 0. */
bool globalBEOptionOK(BEModMetaRec *meta, const char *option);
/* An option that is written on a type; `last` marks those of its base. */
bool typeBEOptionOK(AsnType *type, BETypMetaRec *meta, const char *option, bool last);
/* The same for a class. */
bool classBEOptionOK(AsnObjClass *objClass, BEClassMetaRec *meta, const char *option, bool last);
/* No options are defined for objects, object sets and values. */
