#pragma once

struct AsnType;
struct TypeFuncRun;

/* The run-time call that decodes a value without components, with its bounds and the tests that the
   call can't make itself. */
void decLeaf(AsnType *type, TypeFuncRun &run);

/* A warning and a comment in the generated code: the constraint can be extended, and what lies
   outside of its root isn't decoded rightly. */
void decWarnOfExtendedConstraint(int file, AsnType *type, const char *what);
