#pragma once

/* The whole run of the tool; returns the exit status. */
int velmo_main(int argc, char **argv);
