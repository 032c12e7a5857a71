#!/bin/sh
# managed.sh COMMAND...: runs the command on the current display under a window manager and returns its exit status.
# The command starts when the window manager has started, because a window that is shown before may stay inactive.
set -eu
started=$(mktemp -d)
manager=
trap '[ -z "$manager" ] || kill "$manager"; rm -r "$started"' EXIT
mkfifo "$started/pipe"
openbox --sm-disable --startup "sh -c 'echo started >\"$started/pipe\"'" &
manager=$!
timeout 60 cat "$started/pipe" || { echo "The window manager did not start." >&2; exit 1; }
"$@"
