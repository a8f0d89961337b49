# velmo_generate: a library of the C that asntree and velmo make of ASN.1 modules.
#
#   velmo_generate (TARGET name ASN1 file... [ENTRY type...] [OPTIONS option...] [PREFIX text]
#                   [TEST] [TABLES])
#
# docs/cmake.md tells how it is used. Which files come of the modules is known only when they were compiled.
# The build therefore knows a fixed few instead, which are rewritten when something in the generated ones
# changed: a source for each kind of function, which includes the generated sources; a header that includes all
# generated ones; and a version header, which each way to a generated header leads through. velmoRun.cmake
# writes them.

cmake_policy(VERSION 3.21)

function(velmo_generate)
  cmake_parse_arguments(PARSE_ARGV 0 arg "TEST;TABLES" "TARGET;PREFIX" "ASN1;ENTRY;OPTIONS")
  velmo_check_arguments()
  set(name ${arg_TARGET})
  set(directory ${CMAKE_CURRENT_BINARY_DIR}/${name}_asn1)

  set(files)
  foreach(file IN LISTS arg_ASN1)
    get_filename_component(path ${file} ABSOLUTE)
    if(NOT EXISTS ${path} AND NOT IS_ABSOLUTE ${file})
      set(path ${CMAKE_CURRENT_BINARY_DIR}/${file}) # made by the build
    endif()
    list(APPEND files ${path})
  endforeach()

  # In a file, since a make file doesn't notice that a command changed.
  velmo_list_options(options)
  list(JOIN options "\n" text)
  velmo_write_changed(${directory}/options "${text}\n")

  set(sources enc dec tst tab)
  list(TRANSFORM sources REPLACE "(.+)" "${directory}/${name}_\\1.c")
  if(VELMO_PROGRAMS)
    set(asntree ${VELMO_PROGRAMS}/asntree)
    set(velmo ${VELMO_PROGRAMS}/velmo)
  else()
    set(asntree $<TARGET_FILE:velmo::asntree>)
    set(velmo $<TARGET_FILE:velmo::velmo>)
  endif()
  set(script ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/velmoRun.cmake)
  add_custom_command(OUTPUT ${directory}/done
    BYPRODUCTS ${sources} ${directory}/include/${name}_asn1.h ${directory}/include/${name}_asn1_version.h
    COMMAND ${CMAKE_COMMAND} -D NAME=${name} -D DIRECTORY=${directory} -D BASE=${CMAKE_CURRENT_SOURCE_DIR}
      -D ASNTREE=${asntree} -D VELMO=${velmo} -P ${script} -- ${files}
    DEPENDS ${files} ${directory}/options ${asntree} ${velmo} ${script}
    DEPFILE ${directory}/depends
    COMMENT "Generating the C of ${name} from ASN.1" VERBATIM)
  # A target of its own: whatever uses the library waits until all headers are there.
  add_custom_target(${name}_asn1 DEPENDS ${directory}/done)

  add_library(${name} STATIC ${sources})
  add_dependencies(${name} ${name}_asn1)
  target_include_directories(${name} SYSTEM PUBLIC ${directory}/include)
  target_link_libraries(${name} PUBLIC velmo::asnrts)
endfunction()

macro(velmo_check_arguments)
  if(NOT arg_TARGET OR NOT arg_ASN1)
    message(FATAL_ERROR "velmo_generate needs TARGET and ASN1")
  endif()
  if(arg_UNPARSED_ARGUMENTS OR arg_KEYWORDS_MISSING_VALUES)
    message(FATAL_ERROR "velmo_generate (TARGET ${arg_TARGET} ...): wrong at "
      "${arg_UNPARSED_ARGUMENTS} ${arg_KEYWORDS_MISSING_VALUES}")
  endif()
  if(NOT CMAKE_C_COMPILER_LOADED)
    message(FATAL_ERROR "velmo_generate needs a project with the language C")
  endif()
  foreach(option IN LISTS arg_OPTIONS)
    if(NOT option MATCHES "^[-+]")
      message(FATAL_ERROR "velmo_generate (TARGET ${arg_TARGET} ...): \"${option}\" is no option")
    elseif(option MATCHES "^-([sScChH]|[mM][dD])=")
      message(FATAL_ERROR "velmo_generate (TARGET ${arg_TARGET} ...): ${option} can't be given, "
        "since it is said where files go")
    endif()
  endforeach()
endmacro()

# What asntree is told, an option a line. TEST and TABLES stand behind OPTIONS, since an option there may choose
# all files anew.
macro(velmo_list_options result)
  set(${result})
  if(arg_PREFIX)
    list(APPEND ${result} -PREFIX=*:${arg_PREFIX})
    foreach(kind T CL V VS O OS)
      list(APPEND ${result} -${kind}PREF=${arg_PREFIX})
    endforeach()
  endif()
  foreach(type IN LISTS arg_ENTRY)
    list(APPEND ${result} -ENTRY=${type})
  endforeach()
  foreach(option IN LISTS arg_OPTIONS)
    if(option MATCHES "^-[aA]=([^/].*)")
      set(option -A=${CMAKE_CURRENT_SOURCE_DIR}/${CMAKE_MATCH_1}) # messages name whole paths then
    endif()
    list(APPEND ${result} ${option})
  endforeach()
  if(arg_TEST)
    list(APPEND ${result} -TST=combined:combined)
  endif()
  if(arg_TABLES)
    list(APPEND ${result} -TAB=YES -TABF=YES -TDEFS=YES)
  endif()
endmacro()

# velmo_write_changed (FILE TEXT): leaves a file alone that has this text.
function(velmo_write_changed file text)
  if(EXISTS ${file})
    file(READ ${file} old)
    if(old STREQUAL text)
      return()
    endif()
  endif()
  file(WRITE ${file} "${text}")
endfunction()
