#!/bin/sh
# Lists every source file that is not formatted as clang-format would format it.
set -eu
cd "$(dirname "$0")/.."
find src tools tests bench data -name '*.h' -o -name '*.cpp' | sort |
  xargs clang-format --dry-run -Werror
