#pragma once

/* Brings up the back end for the tool of this name (null: none), version (major * 100 + minor) and
   usage text (lines, up to a null entry): reads the command line, loads all trees and settles all
   options. A wrong command line ends the run with the usage text and status 1, a tree that can't be
   read with a fatal error. */
void initBackend(int argc, char **argv, const char *toolName, int version, int patchLevel,
                 const char *const *usageText);
