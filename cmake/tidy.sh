#!/bin/sh
# Runs clang-tidy on src/ and tools/, with warnings as errors.
set -eu
cd "$(dirname "$0")/.."
[ -e build/tidy/build.ninja ] || cmake --preset tidy
# clang-tidy needs the generated headers but no object files, so only those are built.
# shellcheck disable=SC2046 # word splitting is intended
ninja -C build/tidy $(ninja -C build/tidy -t targets all | sed -n 's/^\([a-z_]*_autogen\): phony$/\1/p')
exec run-clang-tidy -quiet -p build/tidy -j "$(nproc)" "^$PWD/(src|tools)/"
