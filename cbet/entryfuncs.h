#pragma once

struct AsnType;
struct TypeFuncRun;

/* Entry functions: what an application or an entry table calls. They hold what stands outside the
   body of a type, and call its normal function or have the body in line. */

/* The entry function of `type`, with its prototype. */
void genEntryFunc(AsnType *type, TypeFuncRun &run);
/* The call of the type's normal function from its entry function. */
void cCallSeprNormFuncFromEntryFunc(AsnType *type, TypeFuncRun &run);
/* True if nothing but the entry function can check the constraints of the type. */
bool mustCheckConstraintsInEntryFunction(AsnType *type);

/* False for the structures of a MORLA application whose body is written inside the entry function.
 */
bool isSeparateNormalFunction(AsnType *type);
