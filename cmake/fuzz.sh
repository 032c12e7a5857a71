#!/bin/sh
# Builds the fuzz targets and runs each for a limited time, starting from a copy of its saved inputs:
#
#     cmake/fuzz.sh [FIGURES]
#
# ZOMREL_FUZZ_SECONDS sets the time for each target; the default is 20 s. An input that breaks a
# target is saved in build/fuzz/found. The numbers of executions are written to the folder FIGURES.
set -eu
figures=${1:-}
cd "$(dirname "$0")/.."
[ -e build/fuzz/build.ninja ] || cmake --preset fuzz
cmake --build --preset fuzz

work=build/fuzz/work
rm -rf "$work"
mkdir -p "$work" build/fuzz/found
cp -r tests/fuzz/corpus/. "$work"
names=$(ls "$work")

export LSAN_OPTIONS=suppressions="$PWD/cmake/lsan-suppressions.txt":print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
status=0
# shellcheck disable=SC2086 # word splitting is intended
printf '%s\n' $names | xargs -P "$(nproc)" -I '{}' sh -c '
  build/fuzz/tests/fuzz/fuzz_{} -max_total_time="${ZOMREL_FUZZ_SECONDS:-20}" -timeout=60 -max_len=2048 \
    -print_final_stats=1 -artifact_prefix=build/fuzz/found/{}- '"$work"'/{} >'"$work"'/{}.log 2>&1' ||
  status=1

for name in $names; do
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$work/$name.log")
  printf '%s %s\n' "$(printf '%-48s' "$name,executions" | tr ' ,' '. ')" "${runs:-broken}"
  if [ -z "$runs" ] || grep -q '^SUMMARY:' "$work/$name.log"; then
    status=1
    tail -n 60 "$work/$name.log" >&2
  fi
done >"$work/figures"
cat "$work/figures"
[ -z "$figures" ] || { mkdir -p "$figures" && cp "$work/figures" "$figures/fuzz.part"; }
exit "$status"
