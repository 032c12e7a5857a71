# Counting which lines of the program run, for cmake/coverage.sh.
option(ZOMREL_COVERAGE "Count the lines of src/ that run (GCC)" OFF)
if(ZOMREL_COVERAGE)
  # What is counted is compiled in src/CMakeLists.txt; whatever links it needs the counters.
  add_link_options(--coverage)

  # The program ends at once, without the exit handlers that write the counters down.
  add_library(zomrel_coverage_exit STATIC ${CMAKE_CURRENT_LIST_DIR}/coverage_exit.cpp)
  target_link_options(zomrel_coverage_exit INTERFACE -Wl,--wrap=_Exit)
endif()
