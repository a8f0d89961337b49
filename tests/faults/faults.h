#pragma once

/* Calls that fail: link faults.cpp, with "--wrap" for each of them, as CMakeLists.txt has it.
   Counting begins with armFaults; the call of that number fails, and all others of its kind go on as
   ever.
 */

enum class Fault { Allocation, Output };

/* 0 for `number`: none fails. Calls of that kind are counted in `counter`. */
void armFaults(Fault fault, unsigned long number, unsigned long &counter);

/* From here on no call fails, as after the work of a tool, where a build that counts what runs
   writes what it counted. */
extern "C" void disarmFaults();
