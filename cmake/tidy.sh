#!/bin/sh
# Runs clang-tidy on src/ and tools/, with warnings as errors. All files of a room are checked as one, because
# most of the time goes into the headers of Qt; the header filter in .clang-tidy names the .cpp files for this
# reason. bugprone-suspicious-include would report each of them; cmake/lint.sh looks for such includes instead.
set -eu
cd "$(dirname "$0")/.."
[ -e build/tidy/build.ninja ] || cmake --preset tidy
# clang-tidy needs the generated headers but no object files, so only those are built.
# shellcheck disable=SC2046 # word splitting is intended
ninja -C build/tidy $(ninja -C build/tidy -t targets all | sed -n 's/^\([a-z_]*_autogen\): phony$/\1/p')
exec run-clang-tidy -quiet -p build/tidy -j "$(nproc)" -checks=-bugprone-suspicious-include \
  "^$PWD/build/tidy/(src|tools)/.*/Unity/"
