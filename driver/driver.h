#pragma once

/* The roof: what main programs begin with. velmo has all of it, the programs beside it what they
   need. */

/* The whole run of the tool; returns the exit status. */
int velmo_main(int argc, char **argv);
/* Its usage text, line by line, ended by a null entry. */
extern const char *const velmoUsage[];

/* Answers "--help", with the usage text, and "--version" wherever they stand: true if one of them
   does, and the run ends with status 0. Fatal error 7 if the answer can't be written. */
bool answerQuestion(int argc, char **argv, const char *program, const char *const *usageText);

/* Calls `run` on a stack that lets a tree be followed through tens of thousands of types that hold
   one another, and answers what it answers; on the caller's own stack where the system gives no
   other. */
int runOnDeepStack(int (*run)(int argc, char **argv), int argc, char **argv);

/* Hands the functions of this tool to the rooms above that call them: loading a tree settles its
   options, and a handle of the model gets the generator's record. Called once, before
   anything else. */
void installHooks();

/* Brings up the back end for the tool of this name (null: none), version (major * 100 + minor) and
   usage text (lines, up to a null entry): reads the command line, loads all trees and settles all
   options. A wrong command line ends the run with the usage text and status 1, a tree that can't be
   read with a fatal error. */
void initBackend(int argc, char **argv, const char *toolName, int version, int patchLevel,
                 const char *const *usageText);
