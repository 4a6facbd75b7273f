# `cmake --install` and find_package(metrify): the library with its headers, and, if they are built, the command with
# its manual page and completion, and the documents.

# The folder where Debian has libraries, below /usr/local too.
if(NOT DEFINED CMAKE_INSTALL_LIBDIR AND CMAKE_LIBRARY_ARCHITECTURE AND EXISTS /etc/debian_version)
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Libraries")
endif()
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/metrify)

set(libraries metrify_static)
if(TARGET metrify_shared)
  list(APPEND libraries metrify_shared)
endif()
install(TARGETS ${libraries} EXPORT metrify-targets COMPONENT metrify
  LIBRARY NAMELINK_COMPONENT metrify
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/metrify DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT metrify)
install(EXPORT metrify-targets NAMESPACE metrify:: DESTINATION ${package_folder} COMPONENT metrify)

configure_package_config_file(cmake/package/metrify-config.cmake.in package/metrify-config.cmake
  INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(package/metrify-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/package/metrify-config.cmake
  ${PROJECT_BINARY_DIR}/package/metrify-config-version.cmake
  DESTINATION ${package_folder} COMPONENT metrify)

# Relative paths, so that the installed folders can be moved; folders that were given as absolute ones stay there.
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
  set(METRIFY_PKGCONFIG_PREFIX ${CMAKE_INSTALL_PREFIX})
  set(METRIFY_PKGCONFIG_LIBDIR ${CMAKE_INSTALL_FULL_LIBDIR})
  set(METRIFY_PKGCONFIG_INCLUDEDIR ${CMAKE_INSTALL_FULL_INCLUDEDIR})
else()
  file(RELATIVE_PATH prefix_from_pkgconfig /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  set(METRIFY_PKGCONFIG_PREFIX "\${pcfiledir}/${prefix_from_pkgconfig}")
  set(METRIFY_PKGCONFIG_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(METRIFY_PKGCONFIG_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(cmake/package/metrify.pc.in package/metrify.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/package/metrify.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT metrify)

if(METRIFY_PROGRAMS AND NOT WIN32)
  file(GLOB manual_pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/man/*.1)
  file(GLOB documents CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md ${PROJECT_SOURCE_DIR}/docs/*.png
    ${PROJECT_SOURCE_DIR}/docs/*.svg)
  install(FILES ${manual_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT metrify)
  install(FILES ${PROJECT_SOURCE_DIR}/README.md ${documents} DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT metrify)
  install(FILES ${PROJECT_SOURCE_DIR}/completions/metrify.bash OPTIONAL
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME metrify COMPONENT metrify)
endif()
