#pragma once

struct AsnType;

/* Entry functions: the doors through which an application calls into generated code. */

/* True while the entry function of a MORLA application's structure is being written, for a type
   with an entry mask: its components then lie in "hometab". */
bool cIsHometab(AsnType *type);
