#!/bin/sh
# Checks the structure of the sources: no widget headers in rooms without widgets, no include of a
# room that is not below the including one, no include cycles.
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
widget_free="src/platform/runtime/* src/platform/dao/* src/platform/dao/*/* src/store/* src/shell/base/module1.*
  src/shell/base/measures.* src/calculation/cuts.* src/catalogue/deductions.*
  src/output/order_report_design.* src/platform/report/design.*
  src/platform/report/pagination.* src/platform/report/sections.* tools/store/*
  tools/store/old_store/*"
widget_headers='QtWidgets|QtPrintSupport|Q(Widget|Application|Dialog|MainWindow|MdiArea|MessageBox|Label|LineEdit|ComboBox'
widget_headers="$widget_headers"'|CheckBox|PushButton|ToolBar|ToolButton|StatusBar|Menu|TableView|AbstractItemView|HeaderView'
widget_headers="$widget_headers"'|Layout|[A-Z][A-Za-z]*Layout|Frame|GroupBox|Print[A-Z][A-Za-z]*|Style|StyledItemDelegate)'
for file in $widget_free; do
  [ -f "$file" ] || continue
  grep -HnE "^#include <($widget_headers)[/>]" "$file" || true
done >"$work/widgets"
[ ! -s "$work/widgets" ] || fail "Widgets in a room that knows none:" "$work/widgets"

# Lists every include of a file of src/ as "file included-file".
find src -name '*.h' -o -name '*.cpp' | sort | while read -r file; do
  sed -nE 's/^#include "([^"]+)".*/\1/p' "$file" | while read -r included; do
    if [ -f "src/$included" ]; then
      echo "$file src/$included"
    fi
  done
done >"$work/includes"

# The rooms from the lowest to the highest. Rooms on the same line must not include each other.
cat >"$work/rooms" <<'ROOMS'
src/platform/runtime/
src/platform/dao/engine/
src/platform/dao/sqlite/ src/platform/dao/postgres/
src/platform/dao/
src/platform/controls/ src/platform/report/
src/shell/base/
src/store/
src/catalogue/ src/output/
src/calculation/
src/orders/
src/shell/
src/main.cpp
ROOMS
awk '
  # The longest matching prefix is the room, so src/shell/base/ is distinct from src/shell/.
  function room(file,   i, best) {
    best = ""
    for (i in rank)
      if (index(file, i) == 1 && length(i) > length(best)) best = i
    return best
  }
  FNR == NR { for (i = 1; i <= NF; ++i) rank[$i] = FNR; next }
  {
    from = room($1); to = room($2)
    if (from == "" || to == "") print $1 ": " $2 " lies in no known room"
    else if (from != to && rank[to] >= rank[from]) print $1 " includes " $2
  }' "$work/rooms" "$work/includes" >"$work/arrows"
[ ! -s "$work/arrows" ] || fail "Includes against the arrows:" "$work/arrows"

# One file of the object model picks the engine; the others know none.
grep -E '^src/platform/dao/[^/]* src/platform/dao/(sqlite|postgres)/' "$work/includes" |
  grep -v '^src/platform/dao/engines\.cpp ' >"$work/engines" || true
[ ! -s "$work/engines" ] || fail "An engine outside of engines.cpp:" "$work/engines"

grep -E '\.h src/.*\.h$' "$work/includes" >"$work/headers" || true
tsort "$work/headers" >/dev/null 2>"$work/circles" ||
  fail "Includes that go in circles:" "$work/circles"

exit $status
