#pragma once

#include "store/ketravar.h"

/* From a record to what it finally means, and what a record is. */

/* These move the current VNode or TNode along references; with `throughFields` also along paths of
   class fields. A chain that comes back to itself is fatal error 15. */
void skipValues(bool throughFields);
void skipTypes(bool throughFields);
/* The same; `*instantiation` becomes the place of the first top-level instantiation passed, or of
   none. */
void skipTypesCatchInst(bool throughFields, NodePlace *instantiation);
/* From a TYP_FIELDLIST to the field that its path ends at; false if that lies in the predefined
   module, and then the node's own reference was followed instead. */
bool skipFieldList();
/* To the last step of the path that starts at `first`. */
void readLastSNode(ModRec *module, RecNr first);
/* One step of a TNode or VNode that is a synonym with a reference: reads what it names. */
void followSynonymType();
void followSynonymValue();
/* Does the current VNode stand for another one, as a synonym or by a path of fields? And the step
   to that one. */
bool isValueReference();
void followValueReference();
/* The same step of a TNode; false, and nothing read, if the current one stands for itself. */
bool followTypeReference();
/* Of a selection: a definition comes on the way from it, so that it stands for that one. Otherwise
   the alternative is written in line. */
bool selectsDefinition();

/* Questions of the current TNode; it stays current. */
bool isInstantiatedTNode();
bool isTopLevelInstantiatedTNode();
bool isSetTNode();
bool isValFieldTNode();
bool isValSetFieldTNode();
bool isVariabTypeFieldTNode();
bool isClassTNode();
bool isObjSetTNode();

/* Questions of the current VNode; it stays current. */
bool isObjVNode();

/* The first definition of the module with this name, case counts; true and current if there is one.
 */
bool findTypeById(ModRec *module, const char *name);
bool findValueById(ModRec *module, const char *name);

/* 0 for equal, else the sign of `a` minus `b`; INTEGER and REAL values, 0 for other kinds. */
int compareValue(const VNode &a, const VNode &b);
/* The same for values of which the caller knows the kind, as ends of ranges are. */
int compareNumber(const VNode &a, const VNode &b, int kind);

/* So many references are followed one by one; nearly every chain is shorter. */
inline constexpr int FEW_REFERENCES = 16;

/* Moves the current TNode along plain references: from a definition that has nothing of its own, no
   tag, constraint, option, text or narrower range, to another definition that is no instantiation.
   Answers how many were passed, at once if the way was known before. Fatal error 15 in a circle. */
int leapOverPlainReferences();
