#!/bin/sh
# managed.sh COMMAND...: runs the command on the current display under a window manager and returns its exit status.
# The command starts when the window manager has started, because a window that is shown before may stay inactive.
set -eu
command -v openbox >/dev/null || { echo "openbox is missing; ./test installs it." >&2; exit 1; }
started=$(mktemp -d)
manager=
trap 'kill $manager 2>/dev/null || true; rm -rf "$started"' EXIT
mkfifo "$started/pipe"
openbox --sm-disable --startup "sh -c 'echo started >\"$started/pipe\"'" &
manager=$!
timeout 60 cat "$started/pipe" >/dev/null || { echo "The window manager did not start." >&2; exit 1; }
"$@"
