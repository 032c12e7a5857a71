# The checks of .ci/run, each as a separate test. Each check uses all cores and would disturb the
# timing of other tests, so it runs alone.
foreach(check format lint presets cppcheck tidy sanitizers)
  add_test(NAME check_${check} COMMAND ${PROJECT_SOURCE_DIR}/cmake/${check}.sh)
  set_tests_properties(check_${check} PROPERTIES LABELS check RUN_SERIAL ON TIMEOUT 3600)
endforeach()

# The numbers of executions appear in the table of the reliability tests.
add_test(NAME check_fuzz COMMAND ${PROJECT_SOURCE_DIR}/cmake/fuzz.sh ${PROJECT_BINARY_DIR}/reliability)
set_tests_properties(check_fuzz PROPERTIES LABELS check RUN_SERIAL ON TIMEOUT 7200 FIXTURES_REQUIRED reliability)

# Every form in real windows, under a window manager.
add_test(NAME check_display COMMAND ${PROJECT_SOURCE_DIR}/tests/shell/on_display.sh $<TARGET_FILE:shell_screens_test>)
set_tests_properties(check_display PROPERTIES LABELS check RUN_SERIAL ON TIMEOUT 1800)

# Returns all tests below a folder.
function(zomrel_tests_below folder result)
  get_property(all DIRECTORY ${folder} PROPERTY TESTS)
  get_property(inner DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(each ${inner})
    zomrel_tests_below(${each} below)
    list(APPEND all ${below})
  endforeach()
  set(${result} ${all} PARENT_SCOPE)
endfunction()

# Coverage is complete only after all other tests have run.
if(ZOMREL_COVERAGE)
  zomrel_tests_below(${PROJECT_SOURCE_DIR} tests)
  add_test(NAME check_coverage COMMAND ${PROJECT_SOURCE_DIR}/cmake/shown.sh ${PROJECT_SOURCE_DIR}/cmake/coverage.sh
                                       ${PROJECT_BINARY_DIR})
  set_tests_properties(check_coverage PROPERTIES LABELS check RUN_SERIAL ON TIMEOUT 600 DEPENDS "${tests}")
endif()
