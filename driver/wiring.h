#pragma once

/* Hands the functions of this tool to the rooms above that call them: loading a tree settles its
   options, and a handle of the model gets the generator's record. Called once, before
   anything else. */
void installHooks();
