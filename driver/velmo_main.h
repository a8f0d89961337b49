#pragma once

/* The whole run of the tool; returns the exit status. */
int velmo_main(int argc, char **argv);

/* The exit status that a run ends with unless a fatal error comes first. Starts at 0; a generator
   that met an error and went on sets it to 1. */
extern int glbExitCode;
