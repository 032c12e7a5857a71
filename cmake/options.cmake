# All options of the build. The presets in CMakePresets.json set them.
option(ZOMREL_BUILD_TESTS "Build the tests" ON)
option(ZOMREL_BUILD_BENCH "Build the benchmarks" OFF)
option(ZOMREL_CHECKS "Let CTest run the static checks and the sanitizers too" OFF)
option(ZOMREL_UNITY "Compile all files of a room of src/ and tools/ as one" OFF)
option(ZOMREL_WERROR "Treat warnings as errors" OFF)
option(ZOMREL_COVERAGE "Count the lines of src/ that run (GCC only)" OFF)
option(ZOMREL_FUZZ "Link the fuzz targets with libFuzzer (Clang only)" OFF)
set(ZOMREL_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them (GCC and Clang)")

if(ZOMREL_COVERAGE AND NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  message(FATAL_ERROR "ZOMREL_COVERAGE needs GCC.")
endif()
if(ZOMREL_FUZZ AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "ZOMREL_FUZZ needs Clang.")
endif()

# Later formats contain the times of the files, which differ between two builds of the same sources.
set(resource_options --format-version 1)
