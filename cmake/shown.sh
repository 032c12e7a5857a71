#!/bin/sh
# Runs a command and prints its output even if its test passes, which CTest does not do. The output
# goes to descriptor 3, which ./test opens as a copy of its own standard output.
set -eu
said=$(mktemp)
trap 'rm -f "$said"' EXIT
status=0
"$@" >"$said" 2>&1 || status=$?
cat "$said"
[ -z "${ZOMREL_SHOW:-}" ] || { echo && cat "$said"; } >&3
exit "$status"
