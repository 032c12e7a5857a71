#!/bin/sh
# Tells every source file that does not stand as clang-format would set it.
set -eu
cd "$(dirname "$0")/.."
find src tools tests bench data -name '*.h' -o -name '*.cpp' | sort |
  xargs clang-format --dry-run -Werror
