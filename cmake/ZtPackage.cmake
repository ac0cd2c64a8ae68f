# The Debian package of the install rules: `cpack -G DEB` in a build folder gives
# libzt_<version>_<arch>.deb with the library, the headers, the CMake package, zt.pc and the
# debugger views, installed under /usr. Its library dependencies come from dpkg-shlibdeps
# (package dpkg-dev), and the package registers the library with ldconfig.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libzt)
set(CPACK_PACKAGE_VENDOR "zt")
set(CPACK_PACKAGE_CONTACT "zt maintainers <zt@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}: containers, text, streams, graph")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
include(CPack)
