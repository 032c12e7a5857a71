#!/bin/sh
# slower_than.sh SECONDS FILE: names the tests of a JUnit file that took longer, the slowest first.
set -eu
sed -nE 's/.*<testcase name="([^"]+)".* time="([0-9.]+)".*/\2 \1/p' "$2" |
  awk -v limit="$1" '$1 > limit { printf "%7.1f s  %s\n", $1, $2 }' | sort -rn >"$2.slow"
if [ -s "$2.slow" ]; then
  echo "Took longer than $1 s; if so on an idle machine too, list them in cmake/slow_tests.cmake:"
  cat "$2.slow"
fi
