#!/bin/sh
# Runs the tests under the address, leak and undefined-behaviour sanitizers.
set -eu
cd "$(dirname "$0")/.."
[ -e build/asan/build.ninja ] || cmake --preset asan
cmake --build --preset asan
exec ctest --preset asan
