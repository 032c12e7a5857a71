#!/bin/sh
# Builds for 64-bit Windows and makes dist/Zomrel-VERSION-setup.exe and dist/zomrel-VERSION-windows-x64.zip. The same
# commit gives the same bytes on every machine with the same packages and the same kit.
set -eu
cd "$(dirname "$0")/.."

. cmake/packages.sh
. packaging/common.sh
install_packages "$packages_run" "$packages_windows_kit" "$packages_windows"
. packaging/windows/common.sh

kit=$(packaging/windows-kit.sh)
export ZOMREL_WINDOWS_KIT="$kit"
if [ ! -e build/windows/build.ninja ] || [ "$(cat build/windows/kit 2>/dev/null)" != "$kit" ]; then
  cmake --fresh --preset windows
  echo "$kit" >build/windows/kit
fi
cmake --build --preset windows

stage=$PWD/build/windows/stage
folder=$stage/zomrel
packaging/windows/stage.sh "$kit" "$folder"
remove_packages 'Zomrel-*-setup.exe' 'zomrel-*-windows-x64.zip'

archive=$PWD/dist/zomrel-$version-windows-x64.zip
(cd "$stage" && find zomrel | sort | zip -q -X -9 -@ "$archive")

make_setup "$version" "$folder" "$PWD/dist/Zomrel-$version-setup.exe"
write_checksums
