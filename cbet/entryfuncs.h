#pragma once

struct AsnType;

/* Entry functions: what an application or an entry table calls. They hold what stands outside the
   body of a type, and call its normal function or have the body in line. */

/* The entry function of `type` for the table in use (engine.h), with its prototype. */
void genEntryFunc(AsnType *type);
/* The body of a structure within an entry function. */
void genStructEntryFunc(AsnType *type);
/* The call of the type's normal function from its entry function. */
void cCallSeprNormFuncFromEntryFunc(AsnType *type);
/* True if nothing but the entry function can check the constraints of the type. */
bool mustCheckConstraintsInEntryFunction(AsnType *type);

/* False for the structures of a MORLA application whose body is written inside the entry function.
 */
bool isSeparateNormalFunction(AsnType *type);
/* True while the entry function of this very handle is being written. */
bool cIsGeneratingEntryFuncForThisType(AsnType *type);
/* An entry function is being written; set by its writer. */
extern bool glbGeneratingEntryFunction;
/* True while an entry function is being written, for a MORLA entry type: its components are reached
   through the parameter hometab. */
bool cIsHometab(AsnType *type);
