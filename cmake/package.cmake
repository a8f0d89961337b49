# Packages: cpack -G DEB, cpack -G TGZ in a build of the preset "release".
set(CPACK_PACKAGE_NAME velmo)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "the authors of velmo")
set(CPACK_PACKAGE_CONTACT "the authors of velmo <velmo@packages.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "compiler from ASN.1 to C, with coding and printing functions")
set(CPACK_PACKAGE_DESCRIPTION "\
asntree compiles ASN.1 modules into syntax trees, and velmo writes C for
them: types, functions that encode, decode and print values in BER, and
tables. velmo-tool makes a program out of modules that prints, checks,
converts and encodes their messages, velmo-browse a page to go from a
definition to the C of it, and back; velmo-show prints a tree for people.
.
The run-time layer that the C needs is in this package, with files for
CMake and for pkg-config.")
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "gcc | c-compiler, libc6-dev | libc-dev")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cmake, pkgconf | pkg-config")
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/cmake/debian/prepare.cmake)
include(CPack)
