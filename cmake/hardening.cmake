# What makes attacks on the programs and modules harder. cmake/checks/hardening reads from the files whether it has taken
# effect.

set(METRIFY_HARDENED) # options for the compilation of our own code
if(WIN32)
  # Random addresses, and no execution of data. The linker does not write the time of the build, so that the files are
  # reproducible.
  add_link_options(-Wl,--dynamicbase,--nxcompat,--no-insert-timestamp)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    add_link_options(-Wl,--high-entropy-va)
  endif()
else()
  # Programs at random addresses too.
  include(CheckPIESupported)
  check_pie_supported(LANGUAGES CXX)
  # Addresses of imported functions are resolved when a file is loaded, and are read-only from then on.
  add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
  # A large frame cannot reach beyond the guard page of a stack.
  list(APPEND METRIFY_HARDENED -fstack-clash-protection)
  # The sanitizers have their own checks, and the library has none without optimisation.
  if(NOT METRIFY_SANITIZE AND NOT METRIFY_COVERAGE)
    list(APPEND METRIFY_HARDENED -fstack-protector-strong $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
  endif()
endif()
