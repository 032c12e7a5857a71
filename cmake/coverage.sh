#!/bin/sh
# Reports the line coverage of src/ for each room and fails if the total is below 90 %:
#
#     cmake/coverage.sh BUILD
#
# BUILD/coverage.txt lists the lines that did not run, file by file.
set -eu
least=90
build=$1
cd "$(dirname "$0")/.."
gcovr --root . --filter src/ -j "$(nproc)" --csv "$build/coverage.csv" --txt "$build/coverage.txt" "$build/src"

awk -F , -v least="$least" '
  function row(name, lines, run) {
    printf "%-24s %6d %6d %6.1f %%\n", name, lines, run, 100 * run / lines
  }
  NR > 1 && $2 > 0 {
    room = $1
    sub("^src/", "", room)
    if (!sub("/[^/]*$", "", room)) room = "main.cpp"
    if (!(room in lines)) rooms[++count] = room
    lines[room] += $2; run[room] += $3
    allLines += $2; allRun += $3
  }
  END {
    printf "%-24s %6s %6s\n", "room of src/", "lines", "run"
    for (i = 1; i <= count; ++i) row(rooms[i], lines[rooms[i]], run[rooms[i]])
    row("all", allLines, allRun)
    if (100 * allRun < least * allLines) {
      print "less than " least " %"
      exit 1
    }
  }' "$build/coverage.csv"
