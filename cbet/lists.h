#pragma once

#include "base/i64.h"
#include "base/text.h"

struct AsnType;

/* Sizes of lists and strings, their bounds, and loops over lists. */

/* "listInit (home);" or what the form of the list asks for. */
void cInitList(int file, AsnType *type);
/* The C expression of the number of elements or characters. A form without a length gives the size
   limit as a number with `useLimit`, else the current n variable. No text in other forms than those
   of strings and lists. Warns on the standard error stream of a limit beyond 32 bits. */
Text cGetSize(AsnType *type, bool useLimit);
/* A bound of sizes of `type` as a number, with the same warning. */
Text cSizeBoundText(AsnType *type, sint64 bound);
/* Counts one element more; writes nothing for a type that is no list. */
void cIncListSize(int file, AsnType *list);

/* "if (size >= limit) {": an error report, or leaving the loop, once the list is full. The second
   form only leaves the loop, the third writes `action` before. Nothing for a list without upper
   bound. */
void cCheckListUpperBound(int file, AsnType *elem);
void cCheckListUpperBoundWithBreak(int file, AsnType *elem);
void cCheckListUpperBoundWithActionAndBreak(int file, AsnType *elem, const char *action);

/* Loops over the elements of a list that exists. Each opens a block for its variable and one for
   the loop's body. */

/* A for loop in either direction; within it the n or a variable of the loop is the current one. */
void cBeginForLoop(int file, AsnType *list, bool reverse);
void cEndForLoop(int file, AsnType *list);
