#!/bin/sh
# Builds everything with Clang, with warnings as errors.
set -eu
cd "$(dirname "$0")/.."
[ -e build/clang/build.ninja ] || cmake --preset clang
exec cmake --build --preset clang
