#pragma once

/* Long chains of definitions that only stand for one another. */

/* So many references are followed one by one; nearly every chain is shorter. */
inline constexpr int FEW_REFERENCES = 16;

/* Moves the current TNode along plain references: from a definition that has nothing of its own, no
   tag, constraint, option, text or narrower range, to another definition that is no instantiation.
   Answers how many were passed, at once if the way was known before. Fatal error 15 in a circle. */
int leapOverPlainReferences();
