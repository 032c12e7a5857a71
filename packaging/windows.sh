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
mkdir -p dist

archive=$PWD/dist/zomrel-$version-windows-x64.zip
rm -f "$archive"
(cd "$stage" && find zomrel | sort | zip -q -X -9 -@ "$archive")

# The uninstaller removes the files that the installer brings, and nothing else.
(
  cd "$folder"
  find . -type f -printf '%P\n' | sort | sed 's|/|\\|g; s|.*|Delete "$INSTDIR\\&"|'
  find . -mindepth 1 -type d -printf '%P\n' | sort -r | sed 's|/|\\|g; s|.*|RMDir "$INSTDIR\\&"|'
) >"$stage/installed-files.nsh"
makensis -V2 -WX -INPUTCHARSET UTF8 "-DVERSION=$version" "-DSTAGE=$folder" "-DINSTALLED=$stage/installed-files.nsh" \
  "-DICON=$PWD/build/windows/zomrel.ico" "-DTASK=$PWD/packaging/windows/backup-task.nsh" \
  "-DOUT=$PWD/dist/Zomrel-$version-setup.exe" packaging/windows/setup.nsi
write_checksums
