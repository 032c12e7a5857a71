# This interface target carries the compile options of all targets.
add_library(zomrel_options INTERFACE)
target_include_directories(zomrel_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_definitions(
  zomrel_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH
                           QT_DISABLE_DEPRECATED_BEFORE=0x060000)
target_compile_options(
  zomrel_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                           -Wold-style-cast -Wcast-qual)

option(ZOMREL_WERROR "Treat warnings as errors" OFF)
if(ZOMREL_WERROR)
  target_compile_options(zomrel_options INTERFACE -Werror)
endif()

set(ZOMREL_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(ZOMREL_SANITIZE)
  target_compile_options(zomrel_options INTERFACE -fsanitize=${ZOMREL_SANITIZE} -fno-omit-frame-pointer
                                                  -fno-sanitize-recover=all)
  target_link_options(zomrel_options INTERFACE -fsanitize=${ZOMREL_SANITIZE})
endif()

# zomrel_room(NAME SOURCES ... LINKS ...): adds a room of the program, a static library that links
# only the rooms below it. A call into a higher room does not link.
function(zomrel_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(${name} PUBLIC zomrel_options ${ROOM_LINKS})
endfunction()

# zomrel_gtest(NAME SOURCES ... LINKS ...): adds a GoogleTest binary without widgets.
function(zomrel_gtest name)
  cmake_parse_arguments(T "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${T_LINKS} GTest::gtest GTest::gmock zomrel_gtest_main)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()

# zomrel_qtest(NAME SOURCES ... LINKS ...): adds a Qt Test binary that runs widgets on the offscreen platform.
function(zomrel_qtest name)
  cmake_parse_arguments(T "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${T_LINKS} Qt6::Test zomrel_test_support)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()

option(ZOMREL_FUZZ "Link the fuzz targets with libFuzzer, which Clang has" OFF)
add_custom_target(zomrel_fuzz_targets)

# zomrel_fuzz(NAME SOURCES ... LINKS ...): adds a fuzz target with its saved inputs in tests/fuzz/corpus/NAME.
# Without libFuzzer the saved inputs run as a test.
function(zomrel_fuzz name)
  cmake_parse_arguments(F "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(fuzz_${name} ${F_SOURCES})
  target_link_libraries(fuzz_${name} PRIVATE ${F_LINKS} zomrel_fuzz_support)
  if(ZOMREL_FUZZ)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    add_dependencies(zomrel_fuzz_targets fuzz_${name})
  else()
    target_sources(fuzz_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/fuzz/replay.cpp)
    add_test(NAME fuzz_${name}_corpus COMMAND fuzz_${name} ${PROJECT_SOURCE_DIR}/tests/fuzz/corpus/${name})
    set_tests_properties(fuzz_${name}_corpus PROPERTIES TIMEOUT 300)
  endif()
endfunction()

# The file in which the server of a test run writes how to connect to it.
set(ZOMREL_TEST_SERVER ${PROJECT_BINARY_DIR}/server/place)

# zomrel_on_server(NAME ...): registers each test a second time, as NAME_on_server, with stores on a server.
# The second test gets the properties that the first one has at the time of this call.
function(zomrel_on_server)
  foreach(name ${ARGN})
    foreach(property ENVIRONMENT FIXTURES_REQUIRED TIMEOUT)
      get_test_property(${name} ${property} ${property})
      if(NOT ${property})
        set(${property} "")
      endif()
    endforeach()
    list(APPEND ENVIRONMENT ZOMREL_TEST_ENGINE=postgresql ZOMREL_TEST_SERVER=${ZOMREL_TEST_SERVER})
    list(APPEND FIXTURES_REQUIRED server)
    add_test(NAME ${name}_on_server COMMAND ${name})
    set_tests_properties(${name}_on_server PROPERTIES TIMEOUT "${TIMEOUT}" ENVIRONMENT "${ENVIRONMENT}"
                                                      FIXTURES_REQUIRED "${FIXTURES_REQUIRED}")
  endforeach()
endfunction()
