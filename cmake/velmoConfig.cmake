# What an installed velmo offers to other projects: the program as velmo::velmo, and the run-time
# layer of the code that it writes as velmo::asnrts.
include("${CMAKE_CURRENT_LIST_DIR}/velmoTargets.cmake")
