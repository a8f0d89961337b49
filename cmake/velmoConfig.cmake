# What an installed velmo offers to other projects: velmo_generate, the programs as velmo::asntree and
# velmo::velmo, and the run-time layer of the code that they write as velmo::asnrts.
include("${CMAKE_CURRENT_LIST_DIR}/velmoTargets.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/velmoGenerate.cmake")
