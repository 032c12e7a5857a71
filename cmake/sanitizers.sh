#!/bin/sh
# Runs the tests under the address, leak and undefined-behaviour sanitizers.
set -eu
cd "$(dirname "$0")/.."
[ -e build/asan/build.ninja ] || cmake --preset asan
cmake --build --preset asan
export ASAN_OPTIONS=detect_leaks=1
export LSAN_OPTIONS=suppressions="$PWD/cmake/lsan-suppressions.txt":print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ZOMREL_SHOW='' exec ctest --preset asan --parallel "$(nproc)"
