# Run by the build for velmo_generate:
#   cmake -D NAME=target -D DIRECTORY=... -D BASE=... -D ASNTREE=... -D VELMO=... -P velmoRun.cmake -- file...
# Compiles the files, generates the C of all trees, and puts into DIRECTORY what changed:
#   options       what asntree is told, written by velmo_generate
#   stx/, c/      trees and generated files
#   include/      for each generated header one that includes it; NAME_asn1.h, which includes all
#   NAME_....c    the sources that are compiled
#   depends       what all depends on; done is touched at the end
# BASE is the directory that relative paths of options mean.
cmake_minimum_required(VERSION 3.21)

include(${CMAKE_CURRENT_LIST_DIR}/velmoGenerate.cmake) # velmo_write_changed
set(work ${DIRECTORY}/new)

# run (WHERE PROGRAM ARGUMENT...): its messages are shown; if it fails, what was there stays.
function(run where program)
  execute_process(COMMAND ${program} ${ARGN} WORKING_DIRECTORY ${where}
    OUTPUT_VARIABLE output RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    get_filename_component(program ${program} NAME)
    message(FATAL_ERROR "${program} ended with ${status}; nothing is generated for ${NAME}\n${output}")
  endif()
endfunction()

# A generated text without the times in its first lines.
function(read_body result file)
  file(READ ${file} text)
  string(FIND "${text}" "\n * ASN.1 module = " start)
  if(start GREATER 0)
    string(SUBSTRING "${text}" ${start} -1 text)
  endif()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

# Compilers look at times: a file that is as it was keeps its own. Gives the names of all, and sets
# word_of_NAME to a word for what stands in a file.
function(place_files directory result)
  set(from ${work}/${directory})
  set(to ${DIRECTORY}/${directory})
  file(GLOB names RELATIVE ${from} ${from}/*)
  file(GLOB stale RELATIVE ${to} ${to}/*)
  list(REMOVE_ITEM stale ${names})
  foreach(name IN LISTS stale)
    file(REMOVE ${to}/${name})
  endforeach()
  foreach(name IN LISTS names)
    read_body(new ${from}/${name})
    set(old)
    if(EXISTS ${to}/${name})
      read_body(old ${to}/${name})
    endif()
    if(NOT "${new}" STREQUAL "${old}")
      file(RENAME ${from}/${name} ${to}/${name})
    endif()
    string(SHA1 word "${new}")
    set(word_of_${name} ${word} PARENT_SCOPE)
  endforeach()
  set(${result} ${names} PARENT_SCOPE)
endfunction()

# What stands behind asntree's -MD=, with whole paths, as what "done" depends on.
function(write_depends)
  file(READ ${work}/depends text)
  string(REPLACE "\\\n" "" text "${text}")
  string(REGEX REPLACE "\n.*" "" text "${text}") # further lines are for files that vanish
  string(REGEX REPLACE ".*[.]stx: +" "" text "${text}")
  string(REPLACE "\\ " "\t" text "${text}") # blanks in names
  string(REGEX REPLACE " +" ";" paths "${text}")
  string(REPLACE " " "\\ " text "${DIRECTORY}/done:")
  foreach(path IN LISTS paths)
    string(REPLACE "\t" " " path "${path}")
    get_filename_component(path "${path}" ABSOLUTE BASE_DIR "${BASE}")
    string(REPLACE " " "\\ " path "${path}")
    string(APPEND text " ${path}")
  endforeach()
  file(WRITE ${DIRECTORY}/depends "${text}\n")
endfunction()

set(files)
set(isFile FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(n RANGE ${last})
  if(isFile)
    list(APPEND files ${CMAKE_ARGV${n}})
  elseif(CMAKE_ARGV${n} STREQUAL "--")
    set(isFile TRUE)
  endif()
endforeach()

file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work}/stx ${work}/c ${work}/include ${DIRECTORY}/c ${DIRECTORY}/include)
file(STRINGS ${DIRECTORY}/options options ENCODING UTF-8)
run(${BASE} ${ASNTREE} ${options} -S=${work}/stx -MD=${work}/depends ${files})
file(GLOB trees RELATIVE ${work}/stx ${work}/stx/*.stx)
list(TRANSFORM trees REPLACE "[.]stx$" "")
run(${work}/c ${VELMO} -VERBOSE=QUIET -PREFIXLEN=32 -S=${work}/stx ${trees})

place_files(c generated)
set(headers ${generated})
list(FILTER headers INCLUDE REGEX "[.](typ|def|tab|ext)$")

# The headers that programs include.
set(version)
foreach(header IN LISTS headers)
  string(APPEND version " * ${header} ${word_of_${header}}\n")
  velmo_write_changed(${work}/include/${header} "#include \"${NAME}_asn1_version.h\"\n#include \"../c/${header}\"\n")
endforeach()
string(MAKE_C_IDENTIFIER ${NAME} guard)
string(TOUPPER ${guard}_ASN1_H guard)
set(all "#ifndef ${guard}\n#define ${guard}\n\n#include \"${NAME}_asn1_version.h\"\n#include \"asnapi.h\"\n")
foreach(kind ext typ def)
  foreach(header IN LISTS headers)
    if(header MATCHES "[.]${kind}$")
      string(APPEND all "#include \"../c/${header}\"\n")
    endif()
  endforeach()
endforeach()
velmo_write_changed(${work}/include/${NAME}_asn1.h "${all}\n#endif\n")
velmo_write_changed(${work}/include/${NAME}_asn1_version.h "/* What the generated headers hold:\n${version} */\n")
place_files(include placed)

# The sources that the library is made of; each includes those of one kind.
set(kinds_enc enc cod)
set(kinds_dec dec)
set(kinds_tst tst ask pri)
set(kinds_tab tab)
foreach(source enc dec tst tab)
  set(text "#include \"include/${NAME}_asn1_version.h\"\ntypedef int ${source}IsNeverEmpty;\n")
  foreach(kind IN LISTS kinds_${source})
    foreach(file IN LISTS generated)
      if(file MATCHES "${kind}[.]c$")
        string(APPEND text "#include \"c/${file}\" /* ${word_of_${file}} */\n")
      endif()
    endforeach()
  endforeach()
  velmo_write_changed(${DIRECTORY}/${NAME}_${source}.c "${text}")
endforeach()

write_depends()
file(REMOVE_RECURSE ${DIRECTORY}/stx)
file(RENAME ${work}/stx ${DIRECTORY}/stx)
file(REMOVE_RECURSE ${work})
file(TOUCH ${DIRECTORY}/done)
