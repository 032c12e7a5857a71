#!/bin/sh
# Checks what ./package windows makes, with Wine, on a display of its own: the portable folder, the companions, the
# store on a server, the installer and the uninstaller, and the tests that are built for Windows. Takes the parts to
# check as arguments: tests, folder, server, setup, reproducible; without arguments, all of them.
set -eu
cd "$(dirname "$0")/../.."

[ $# -gt 0 ] || set -- tests folder server setup reproducible
for part in "$@"; do
  [ -x "tests/packages/windows_$part.sh" ] || {
    sed -n '2,/^set/s/^# \{0,1\}//p' tests/packages/windows.sh >&2
    exit 2
  }
done
. cmake/packages.sh
install_packages "$packages_run" "$packages_windows_kit" "$packages_windows" "$packages_windows_check"

ZOMREL_PACKAGES_WORK=${ZOMREL_PACKAGES_WORK:-$PWD/build/windows-check}
mkdir -p "$ZOMREL_PACKAGES_WORK"
export ZOMREL_PACKAGES_WORK
./package windows
for part in "$@"; do
  echo "== $part"
  # A call of Wine without a display leaves a session that later windows would join and never be shown in.
  xvfb-run --auto-servernum --server-args="-screen 0 1366x768x24" "tests/packages/windows_$part.sh"
done
echo "All parts passed: $*"
