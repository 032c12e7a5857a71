#!/bin/sh
# on_bus.sh PROGRAM STORE_PROGRAM: walks through a whole order as a screen reader does, over the accessibility bus.
# The program runs in a folder of its own, on a display of its own with a window manager, and on a session bus of its
# own, which starts the accessibility bus.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
for tool in Xvfb xvfb-run openbox xdotool dbus-run-session dbus-daemon; do
  command -v "$tool" >/dev/null || { echo "$tool is missing; ./test installs it." >&2; exit 1; }
done
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -m 700 "$folder/run" "$folder/home"
cp "$1" "$folder/Zomrel"
"$2" create "$folder/Aluminium.mdb"
# Debian's interpreter finds the package python3-gi; another one may come first in PATH.
env -u DBUS_SESSION_BUS_ADDRESS -u AT_SPI_BUS_ADDRESS -u WAYLAND_DISPLAY \
  XDG_RUNTIME_DIR="$folder/run" HOME="$folder/home" LC_ALL=C.UTF-8 \
  xvfb-run --auto-servernum --server-args="-screen 0 1366x768x24" \
  dbus-run-session -- "$here/../../support/managed.sh" /usr/bin/python3 "$here/walk_order.py" "$folder"
