#!/bin/sh
# Makes dist/zomrel_VERSION_amd64.deb and dist/zomrel-VERSION-linux-x86_64.tar.xz. The same commit gives the same
# bytes on every machine with the same packages, regardless of its folder, user, locale and time.
set -eu
cd "$(dirname "$0")/.."

. cmake/packages.sh
. packaging/common.sh
install_packages "$packages_run" "$packages_package"

if [ "$(dpkg --print-architecture)" != amd64 ]; then
  echo "Packages for Linux are made on amd64 only." >&2
  exit 1
fi

# Configuring writes the date of the commit into the files for the desktop.
cmake --preset package
cmake --build --preset package

stage=$PWD/build/package/stage
rm -rf "$stage"
mkdir -p "$stage"
remove_packages 'zomrel_*_amd64.deb' "zomrel-*-$platform.tar.xz"
install_quietly "$stage/program"
install_quietly "$stage/desktop" --component desktop
make_manual "$stage/manual"

packaging/deb.sh "$stage"
packaging/portable.sh "$stage"
write_checksums
