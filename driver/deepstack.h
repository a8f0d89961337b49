#pragma once

/* Calls `run` on a stack that lets a tree be followed through tens of thousands of types that hold
   one another, and answers what it answers; on the caller's own stack where the system gives no
   other. */
int runOnDeepStack(int (*run)(int argc, char **argv), int argc, char **argv);
