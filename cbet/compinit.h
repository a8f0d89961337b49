#pragma once

struct AsnType;
struct TypeFuncRun;

/* First values, memory and control members of components. What initialises is for the kinds that
   construct a value. */

/* First values of a structure or list. */
void initComponents(AsnType *type, TypeFuncRun &run);
/* A decoded SET that has no mask in its value works on a local one. */
bool generateDummyCompmask(AsnType *type, const TypeFuncRun &run);

/* Memory for a component or element, then the mark that it is present. */
void initializeComp(AsnType *father, AsnType *comp, TypeFuncRun &run);
/* Gives back the home of a component, if it has one; nothing while printing. */
void releaseComp(AsnType *father, AsnType *comp, TypeFuncRun &run);
/* The test that the list has room for one element more. */
void checkListUpperBound(AsnType *father, AsnType *comp, TypeFuncRun &run);
