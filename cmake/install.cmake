# What is installed: programs with manuals, completion and pages; the run-time layer; what other projects need
# to use them.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

foreach(program asntree velmo velmo-browse velmo-show velmo-tool)
  if(TARGET ${program})
    install(TARGETS ${program} EXPORT velmoTargets)
    install(FILES docs/${program}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES completion/velmo.bash RENAME ${program}
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  endif()
endforeach()

file(GLOB pages docs/*.md docs/*.png docs/*.svg)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN CMakeLists.txt EXCLUDE)

# The layer, compiled and as sources.
install(TARGETS asnrts EXPORT velmoTargets)
install(DIRECTORY rts/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/velmo
  FILES_MATCHING PATTERN "*.typ" PATTERN "*.ext" PATTERN "asnapi.h" PATTERN "asntool.h" PATTERN whole EXCLUDE)
install(DIRECTORY rts/ DESTINATION ${CMAKE_INSTALL_DATADIR}/velmo/rts
  FILES_MATCHING PATTERN "*.typ" PATTERN "*.ext" PATTERN "*.h" PATTERN "*.c")

# For CMake and for pkg-config. Paths in the latter begin at its own place, so that the tree may be moved.
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/velmo)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/velmoConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(EXPORT velmoTargets NAMESPACE velmo:: DESTINATION ${package})
install(FILES cmake/velmoConfig.cmake cmake/velmoGenerate.cmake cmake/velmoRun.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/velmoConfigVersion.cmake DESTINATION ${package})
if(ASN_ARC_BITS)
  set(ASNRTS_DEFINES "-DASN_ARC_BITS=${ASN_ARC_BITS}")
endif()
file(RELATIVE_PATH ASNRTS_ROOT /root/${CMAKE_INSTALL_LIBDIR}/pkgconfig /root)
configure_file(cmake/asnrts.pc.in asnrts.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/asnrts.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
