# Installation, CMake package and pkg-config module "nasshare".
include(CMakePackageConfigHelpers)

install(TARGETS nasshare EXPORT nasshare LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS nasplatform EXPORT nasshare LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/nasshare DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES docs/nasshare.1 docs/nasshare-diag.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES docs/nasshare.3 DESTINATION ${CMAKE_INSTALL_MANDIR}/man3)
install(FILES docs/operations.md docs/security.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

install(EXPORT nasshare NAMESPACE nasshare:: FILE nasshare-targets.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/nasshare)
configure_package_config_file(cmake/nasshare-config.cmake.in nasshare-config.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/nasshare)
write_basic_package_version_file(nasshare-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/nasshare-config.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/nasshare-config-version.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/nasshare)

# The module tells where it lies itself, so that the installed tree may be moved.
set(NASSHARE_PREFIX ${CMAKE_INSTALL_PREFIX})
if(NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
    BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig OUTPUT_VARIABLE above)
  set(NASSHARE_PREFIX "\${pcfiledir}/${above}")
endif()
configure_file(cmake/nasshare.pc.in nasshare.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/nasshare.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
