#pragma once

/* Brings up the back end for the tool in toolInfo: reads the command line, loads all trees and
   settles all options. A wrong command line ends the run with the usage text and status 1, a tree
   that can't be read with a fatal error. */
void initBackend(int argc, char **argv);
