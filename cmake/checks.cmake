# The checks of .ci/run, each a test of its own. They use both cores by themselves and would disturb
# the timing of the others, so each runs alone.
foreach(check format lint cppcheck tidy sanitizers)
  add_test(NAME check_${check} COMMAND ${PROJECT_SOURCE_DIR}/cmake/${check}.sh)
  set_tests_properties(check_${check} PROPERTIES LABELS check RUN_SERIAL ON TIMEOUT 2400)
endforeach()

# Its executions stand in the table of the reliability tests.
add_test(NAME check_fuzz COMMAND ${PROJECT_SOURCE_DIR}/cmake/fuzz.sh ${PROJECT_BINARY_DIR}/reliability)
set_tests_properties(check_fuzz PROPERTIES LABELS check RUN_SERIAL ON TIMEOUT 7200 FIXTURES_REQUIRED reliability)
