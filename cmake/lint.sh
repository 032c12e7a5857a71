#!/bin/sh
# Checks the structure of the sources: no widget headers in rooms without widgets, no include of a
# room that is not below the including one, no include cycles, no overlong file or function.
set -eu
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
status=0

fail() {
  echo "$1"
  sed 's/^/  /' "$2"
  status=1
}

# Rooms and files that must not use widgets, as shell patterns.
widget_free="src/platform/runtime/* src/platform/dao/* src/platform/dao/*/* src/store/* src/base/module1.*
  src/base/measures.* src/calculation/cuts.* src/calculation/stored_lines.* src/catalogue/deductions.*
  src/output/order_report_design.* src/platform/report/design.*
  src/platform/report/pagination.* src/platform/report/sections.* tools/store/*
  tools/store/old_store/* src/shop/* src/shop/planning/* src/shop/checking/*
  src/shop/paper/* tools/shop/*"
widget_headers='QtWidgets|QtPrintSupport|Q(Widget|Application|Dialog|MainWindow|MdiArea|MessageBox|Label|LineEdit|ComboBox'
widget_headers="$widget_headers"'|CheckBox|PushButton|ToolBar|ToolButton|StatusBar|Menu|TableView|AbstractItemView|HeaderView'
widget_headers="$widget_headers"'|Layout|[A-Z][A-Za-z]*Layout|Frame|GroupBox|Print[A-Z][A-Za-z]*|Style|StyledItemDelegate)'
for file in $widget_free; do
  [ -f "$file" ] || continue
  grep -HnE "^#include <($widget_headers)[/>]" "$file" || true
done >"$work/widgets"
[ ! -s "$work/widgets" ] || fail "Widgets in a room that knows none:" "$work/widgets"

# Lists every include of a file of src/ or tools/ as "file included-file".
find src tools -name '*.h' -o -name '*.cpp' | sort >"$work/files"
while read -r file; do
  sed -nE 's/^#include "([^"]+)".*/\1/p' "$file" | while read -r included; do
    for root in src/ tools/ ''; do
      if [ -f "$root$included" ]; then
        echo "$file $root$included"
        break
      fi
    done
  done
done <"$work/files" >"$work/includes"

# The rooms from the lowest to the highest. Rooms on the same line must not include each other.
cat >"$work/rooms" <<'ROOMS'
src/platform/runtime/
src/platform/dao/engine/
src/platform/dao/sqlite/ src/platform/dao/postgres/
src/platform/dao/
src/platform/controls/ src/platform/report/
src/base/
src/store/
src/catalogue/ src/output/
src/calculation/
src/shop/
src/orders/
src/shell/
src/main.cpp
ROOMS
awk '
  # The longest matching prefix is the room.
  function room(file,   i, best) {
    best = ""
    for (i in rank)
      if (index(file, i) == 1 && length(i) > length(best)) best = i
    return best
  }
  FNR == NR { for (i = 1; i <= NF; ++i) rank[$i] = FNR; next }
  $1 ~ /^src\// {
    from = room($1); to = room($2)
    if (from == "" || to == "") print $1 ": " $2 " lies in no known room"
    else if (from != to && rank[to] >= rank[from]) print $1 " includes " $2
  }' "$work/rooms" "$work/includes" >"$work/arrows"
[ ! -s "$work/arrows" ] || fail "Includes against the arrows:" "$work/arrows"

awk '$2 ~ /[.]cpp$/' "$work/includes" >"$work/bodies"
[ ! -s "$work/bodies" ] || fail "Includes of a .cpp file:" "$work/bodies"

# Only engines.cpp may include the rooms of the engines.
grep -E '^src/platform/dao/[^/]* src/platform/dao/(sqlite|postgres)/' "$work/includes" |
  grep -v '^src/platform/dao/engines\.cpp ' >"$work/engines" || true
[ ! -s "$work/engines" ] || fail "An engine outside of engines.cpp:" "$work/engines"


# A header, its private header (x_p.h) and its .cpp file are one unit. A .cpp file without a header of its own
# belongs to the header whose name begins its name, as x_layout.cpp belongs to x.h.
awk '
  function stem(file) { sub(/\.(h|cpp)$/, "", file); sub(/_p$/, "", file); return file }
  function unit(file,   name) {
    for (name = stem(file); name != "" && !(name in header); )
      if (!sub(/_[^_\/]*$/, "", name)) return stem(file)
    return name
  }
  FNR == NR { if (/\.h$/) header[stem($1)] = 1; next }
  unit($1) != unit($2) { print unit($1), unit($2) }' "$work/files" "$work/includes" | sort -u >"$work/units"
tsort "$work/units" >/dev/null 2>"$work/circles" || fail "Includes that go in circles:" "$work/circles"

# Files and functions that may be longer than the limits, because they are a table or a text: file, then
# function if only that may be longer.
cat >"$work/exceptions" <<'EXCEPTIONS'
src/store/schema.cpp cuts
tests/reliability/bad/typed_texts.h typedTexts
tools/store/server_setup.cpp serverSetup
EXCEPTIONS
find src tools bench data tests -name '*.h' -o -name '*.cpp' | sort | xargs awk '
  # The formatted code opens a function with a brace on a line of its own and closes it in the same column.
  function limitOf(file, inTests, elsewhere) { return file ~ /^tests\// ? inTests : elsewhere }
  FNR == NR { excepted[$0] = 1; next }
  FNR == 1 { inFunction = 0 }
  { line[FNR] = $0 }
  FNR > limitOf(FILENAME, 500, 400) && !(FILENAME in tooLong) && !(FILENAME in excepted) {
    tooLong[FILENAME] = 1
    print FILENAME " has more than " limitOf(FILENAME, 500, 400) " lines"
  }
  !inFunction && /^ *\{$/ {
    for (first = FNR - 1; first > 1 && line[first - 1] !~ /^ *$|[;{}:]$|^ *(\/\/|#|template)/; ) --first
    if (line[first] ~ /^ *(class|struct|enum|union|namespace) / && line[FNR - 1] !~ /\)/) next
    inFunction = 1
    closing = substr($0, 1, index($0, "{") - 1) "}"
    name = line[first]
    sub(/\(.*/, "", name)
    sub(/^.*[ :*&]/, "", name)
    next
  }
  inFunction && index($0, closing) == 1 {
    length_ = FNR - first + 1
    if (length_ > limitOf(FILENAME, 60, 40) && !((FILENAME " " name) in excepted))
      print FILENAME ":" first ": " name " has " length_ " lines"
    inFunction = 0
  }' "$work/exceptions" >"$work/long"
[ ! -s "$work/long" ] || fail "Overlong files or functions:" "$work/long"

exit $status
