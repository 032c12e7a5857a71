#!/bin/sh
# on_display.sh TEST: runs the screens test in real windows, on displays of three sizes at three scales, under a window
# manager. With ZOMREL_SCREEN_PICTURES it also writes a picture of each form into that folder.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
test=$1
status=0
for size in 1280x680 1366x728 1920x1040; do
  for scale in 100 150 200; do
    echo "== $size at $scale %"
    env QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8 ZOMREL_SCREEN_SIZE=$size ZOMREL_SCREEN_SCALE=$scale \
      xvfb-run --auto-servernum --server-args="-screen 0 ${size}x24" "$here/../support/managed.sh" "$test" || status=1
  done
done
exit $status
