#!/bin/sh
# Builds with Clang, warnings as errors, and runs clang-tidy over the program and its tools.
set -eu
cd "$(dirname "$0")/.."
[ -e build/tidy/build.ninja ] || cmake --preset tidy
cmake --build --preset tidy
exec run-clang-tidy -quiet -p build/tidy -j "$(nproc)" "^$PWD/(src|tools)/"
