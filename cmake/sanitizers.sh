#!/bin/sh
# Runs the tests under the address, leak and undefined-behaviour sanitizers.
set -eu
cd "$(dirname "$0")/.."
[ -e build/asan/build.ninja ] || cmake --preset asan
cmake --build --preset asan
export ASAN_OPTIONS=detect_leaks=1
export LSAN_OPTIONS=suppressions="$PWD/cmake/lsan-suppressions.txt":print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
# The sanitizers make these tests slow, and fewer repetitions are enough to find their errors.
export ZOMREL_KILLS="${ZOMREL_KILLS:-60}"
export ZOMREL_STATION_LINES="${ZOMREL_STATION_LINES:-100}"
export ZOMREL_SERVER_STATION_LINES="${ZOMREL_SERVER_STATION_LINES:-100}"
export ZOMREL_SOAK_LINES="${ZOMREL_SOAK_LINES:-800}"
export ZOMREL_SERVER_KILLS="${ZOMREL_SERVER_KILLS:-10}"
# The soak compares amounts of memory, which the sanitizers change, so only its embedded run is here, for leaks.
# The screens run here at one scale only, because the same code runs at the others.
# With a server, the tests of the forms and of unusual input run the same code of the program as with an embedded
# store, so they run once. The tests of dao, store and zomrel-store and the journeys cover the driver.
ZOMREL_SHOW='' exec ctest --preset asan --parallel "$(($(nproc) + 1))" \
  --exclude-regex '^(calculation|fr|order|orders|reliability_bad|reliability_full|reliability_month|series|shared)_.*_on_server$|^reliability_soak_test_on_server$|^shell_screens_.*_(150|200)_test$'
