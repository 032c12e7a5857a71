#!/bin/sh
# Runs clang-tidy over the program and its tools, Clang's own warnings as errors.
set -eu
cd "$(dirname "$0")/.."
[ -e build/tidy/build.ninja ] || cmake --preset tidy
# Of a build it needs the headers that are made by programs, and no object.
# shellcheck disable=SC2046 # words are split on purpose
ninja -C build/tidy $(ninja -C build/tidy -t targets all | sed -n 's/^\([a-z_]*_autogen\): phony$/\1/p')
exec run-clang-tidy -quiet -p build/tidy -j "$(nproc)" "^$PWD/(src|tools)/"
