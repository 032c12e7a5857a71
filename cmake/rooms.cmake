# This interface target carries the compile options of all targets.
add_library(zomrel_options INTERFACE)
target_include_directories(zomrel_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_definitions(
  zomrel_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH
                           QT_DISABLE_DEPRECATED_BEFORE=0x060000)
if(WIN32)
  # Without these, the system's header defines macros such as min, and an older socket interface.
  target_compile_definitions(zomrel_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(
    zomrel_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                             -Wold-style-cast -Wcast-qual)
  if(ZOMREL_WERROR)
    target_compile_options(zomrel_options INTERFACE -Werror)
  endif()
elseif(MSVC)
  target_compile_options(zomrel_options INTERFACE /W4 /utf-8 /permissive- $<$<BOOL:${ZOMREL_WERROR}>:/WX>)
endif()

if(ZOMREL_SANITIZE)
  target_compile_options(zomrel_options INTERFACE -fsanitize=${ZOMREL_SANITIZE} -fno-omit-frame-pointer
                                                  -fno-sanitize-recover=all)
  target_link_options(zomrel_options INTERFACE -fsanitize=${ZOMREL_SANITIZE})
endif()
# AddressSanitizer reserves address space and keeps freed memory, so limits and expectations of memory differ.
if(ZOMREL_SANITIZE MATCHES address)
  target_compile_definitions(zomrel_options INTERFACE ZOMREL_ADDRESS_SANITIZER)
endif()

# zomrel_room(NAME SOURCES ... LINKS ... USES ...): adds a room of the program, a static library that links only
# the rooms below it. LINKS are the libraries that the room's headers include; USES are those that only its
# .cpp files include.
function(zomrel_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;USES" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(${name} PUBLIC zomrel_options ${ROOM_LINKS} PRIVATE ${ROOM_USES})
endfunction()

# Tests that ./test --quick leaves out.
include(${CMAKE_CURRENT_LIST_DIR}/slow_tests.cmake)

# Labels a test as slow if it is listed; a list entry that is no test is an error, see tests/CMakeLists.txt.
function(zomrel_label_slow name)
  if(name IN_LIST ZOMREL_SLOW_TESTS)
    set_property(TEST ${name} APPEND PROPERTY LABELS slow)
    set_property(GLOBAL APPEND PROPERTY ZOMREL_SLOW_TESTS_LABELLED ${name})
  endif()
endfunction()

# Headers that nearly all tests include are compiled once for each kind of test. src/ and tools/ get none, so
# that every file there is compiled with its own includes alone.
function(zomrel_precompiled_headers name)
  cmake_parse_arguments(P "" "" "HEADERS;LINKS" ${ARGN})
  set(source ${PROJECT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "")
  add_library(${name} OBJECT ${source})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  target_link_libraries(${name} PRIVATE zomrel_options ${P_LINKS})
  target_precompile_headers(${name} PRIVATE ${P_HEADERS})
endfunction()

# zomrel_gtest(NAME SOURCES ... LINKS ...): adds a GoogleTest binary without widgets.
function(zomrel_gtest name)
  cmake_parse_arguments(T "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${T_LINKS} GTest::gtest GTest::gmock zomrel_gtest_main)
  target_precompile_headers(${name} REUSE_FROM zomrel_gtest_headers)
  set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 900)
  zomrel_label_slow(${name})
endfunction()

# zomrel_qtest(NAME SOURCES ... LINKS ...): adds a Qt Test binary that runs widgets on the offscreen platform.
function(zomrel_qtest name)
  cmake_parse_arguments(T "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${T_LINKS} Qt6::Test zomrel_test_support)
  target_precompile_headers(${name} REUSE_FROM zomrel_qtest_headers)
  if(WIN32) # Qt Test does not write to the standard output there.
    set(arguments -o ${name}.txt,txt)
  endif()
  add_test(NAME ${name} COMMAND ${name} ${arguments})
  set_tests_properties(${name} PROPERTIES TIMEOUT 900 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
  zomrel_label_slow(${name})
endfunction()

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
    set_tests_properties(fuzz_${name}_corpus PROPERTIES TIMEOUT 900 ENVIRONMENT LC_ALL=C.UTF-8)
    zomrel_label_slow(fuzz_${name}_corpus)
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
    zomrel_label_slow(${name}_on_server)
  endforeach()
endfunction()
