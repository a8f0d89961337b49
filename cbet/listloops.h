#pragma once

struct AsnType;

/* Loops over the elements of a list that exists. Each opens a block for its variable and one for
   the loop's body. */

/* A for loop in either direction; within it the n or a variable of the loop is the current one. */
void cBeginForLoop(int file, AsnType *list, AsnType *elem, bool reverse);
void cEndForLoop(int file, AsnType *list);
