#pragma once

/* The whole program: shows what the command line names. The result is the exit status. */
int velmo_show(int argc, char **argv);
