# Line coverage for cmake/coverage.sh.
option(ZOMREL_COVERAGE "Count the lines of src/ that run (GCC)" OFF)
if(ZOMREL_COVERAGE)
  # src/CMakeLists.txt compiles the instrumented code; every binary that links it needs the counters.
  add_link_options(--coverage)

  # The program ends with _Exit, which skips the exit handlers that write the counters to disk.
  add_library(zomrel_coverage_exit STATIC ${CMAKE_CURRENT_LIST_DIR}/coverage_exit.cpp)
  target_link_options(zomrel_coverage_exit INTERFACE -Wl,--wrap=_Exit)
endif()
