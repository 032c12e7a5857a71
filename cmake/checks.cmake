# The checks of .ci/run, each a test of its own. They use both cores by themselves and would disturb
# the timing of the others, so each runs alone.
foreach(check format lint cppcheck tidy sanitizers)
  add_test(NAME check_${check} COMMAND ${PROJECT_SOURCE_DIR}/cmake/${check}.sh)
  set_tests_properties(check_${check} PROPERTIES LABELS check RUN_SERIAL ON TIMEOUT 3600)
endforeach()

# Its executions stand in the table of the reliability tests.
add_test(NAME check_fuzz COMMAND ${PROJECT_SOURCE_DIR}/cmake/fuzz.sh ${PROJECT_BINARY_DIR}/reliability)
set_tests_properties(check_fuzz PROPERTIES LABELS check RUN_SERIAL ON TIMEOUT 7200 FIXTURES_REQUIRED reliability)

# All tests below a folder.
function(zomrel_tests_below folder result)
  get_property(all DIRECTORY ${folder} PROPERTY TESTS)
  get_property(inner DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(each ${inner})
    zomrel_tests_below(${each} below)
    list(APPEND all ${below})
  endforeach()
  set(${result} ${all} PARENT_SCOPE)
endfunction()

# What has run is known when everything has.
if(ZOMREL_COVERAGE)
  zomrel_tests_below(${PROJECT_SOURCE_DIR} tests)
  add_test(NAME check_coverage COMMAND ${PROJECT_SOURCE_DIR}/cmake/shown.sh ${PROJECT_SOURCE_DIR}/cmake/coverage.sh
                                       ${PROJECT_BINARY_DIR})
  set_tests_properties(check_coverage PROPERTIES LABELS check RUN_SERIAL ON TIMEOUT 600 DEPENDS "${tests}")
endif()
