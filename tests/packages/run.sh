#!/bin/sh
# Checks what ./package makes from the committed sources: that the same commit gives the same bytes in another folder,
# and that both packages can be installed, used, upgraded and removed in a clean system without losing a byte of the
# store. Takes the parts to check as arguments: reproducible, deb, portable; without arguments, all of them.
#
# The clean systems are made with debootstrap from the Debian mirror that apt uses here. ZOMREL_ROOT_SUITE,
# ZOMREL_ROOT_MIRROR and ZOMREL_ROOT_COMPONENTS select another one, for example for the portable folder on Ubuntu 22.04:
# ZOMREL_ROOT_SUITE=jammy, ZOMREL_ROOT_COMPONENTS=main,universe and the address of a mirror.
set -eu
cd "$(dirname "$0")/../.."
here=$PWD/tests/packages

[ $# -gt 0 ] || set -- reproducible deb portable
for part in "$@"; do
  case $part in
  reproducible | deb | portable) ;;
  *)
    sed -n '2,/^set/s/^# \{0,1\}//p' "$here/run.sh" >&2
    exit 2
    ;;
  esac
done
if [ "$(id -u)" -ne 0 ]; then
  echo "Has to be run as root: it makes systems of its own and changes into them." >&2
  exit 2
fi

. cmake/packages.sh
install_packages "$packages_run" "$packages_package" "$packages_package_check"

# The folder keeps the clean system and the build for the next run.
work=${ZOMREL_PACKAGES_WORK:-$PWD/build/packages-check}
mkdir -p "$work"
export ZOMREL_PACKAGES_WORK="$work"
"$here/build.sh"
for part in "$@"; do
  echo "== $part"
  "$here/$part.sh"
done
echo "All parts passed: $*"
