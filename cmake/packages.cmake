# Debian packages: `cpack -G DEB` in the build folder, which ./package calls. The target `packaged` builds what they
# contain.

set(packaged metrify metrify_shared metrify_static)
set(CPACK_COMPONENTS_ALL metrify)
if(TARGET metrify_python)
  list(APPEND packaged metrify_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
add_custom_target(packaged DEPENDS ${packaged})

set(debian ${PROJECT_BINARY_DIR}/debian)
set(CPACK_PACKAGE_VENDOR Metrify)
set(CPACK_PACKAGE_CONTACT "Metrify maintainers <maintainers@metrify.example>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/package/compress_manual.cmake)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(CPACK_DEBIAN_METRIFY_PACKAGE_NAME metrify)
set(CPACK_DEBIAN_METRIFY_PACKAGE_SECTION math)
set(CPACK_DEBIAN_METRIFY_PACKAGE_CONTROL_EXTRA ${debian}/shlibs ${debian}/triggers)
set(CPACK_COMPONENT_METRIFY_DESCRIPTION "calculator with units
Converts numbers between unit expressions, reports units that are incompatible,
and runs programs with variables, vectors, functions and equation solving.
Contains the command, the library with its headers for C and C++, and their
documents.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-metrify)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
if(Python_VERSION_MINOR)
  math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "python3 (>= 3.${Python_VERSION_MINOR}~), python3 (<< 3.${next_minor}), python3-numpy")
endif()
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
  ${PROJECT_SOURCE_DIR}/cmake/package/python/postinst ${PROJECT_SOURCE_DIR}/cmake/package/python/prerm)
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "calculator with units for Python
Converts numbers and NumPy arrays between unit expressions, and runs programs
of the metrify calculator.")

# Who links the library depends on this package, and the system's list of libraries is made again.
file(WRITE ${debian}/shlibs "libmetrify ${PROJECT_VERSION_MAJOR} metrify (>= ${PROJECT_VERSION})\n")
file(WRITE ${debian}/triggers "activate-noawait ldconfig\n")

# Each package has these two files.
configure_file(cmake/package/changelog.in ${debian}/changelog @ONLY)
execute_process(COMMAND gzip -9nf ${debian}/changelog)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} variable)
  set(folder share/doc/${CPACK_DEBIAN_${variable}_PACKAGE_NAME})
  install(FILES ${debian}/changelog.gz cmake/package/copyright DESTINATION ${folder} COMPONENT ${component})
endforeach()

include(CPack)
