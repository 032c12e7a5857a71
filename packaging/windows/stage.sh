#!/bin/sh
# stage.sh KIT FOLDER: fills the folder with everything that users get: the programs, the libraries and plugins that
# they load, fonts, Qt's Hebrew texts, the manual and the licences. It contains neither a store nor a logo beside the
# program, so copying it over an older version keeps the user's own.
set -eu
cd "$(dirname "$0")/../.."
. packaging/common.sh
. packaging/windows/common.sh
kit=$1
folder=$2

rm -rf "$folder"
mkdir -p "$folder/fonts" "$folder/translations" "$folder/delivered"
cmake --install build/windows --prefix "$folder" >build/windows/install.log
mv "$folder/Logo.jpg" "$folder/delivered"
rm "$folder"/*.1

for plugin in platforms/qwindows sqldrivers/qsqlite imageformats/qjpeg; do
  mkdir -p "$folder/plugins/${plugin%/*}"
  cp "$kit/plugins/$plugin.dll" "$folder/plugins/$plugin.dll"
done
cp "$kit/bin/libpq.dll" "$folder"

# Prints the names of the libraries that the files of the folder import.
imported() {
  find "$folder" \( -name '*.exe' -o -name '*.dll' \) -exec $triple-objdump --private-headers {} + |
    awk '/DLL Name:/ { print $3 }' | sort -uf
}

# Copies what the files import, then what the copies import, until nothing is missing. Other libraries belong to
# Windows. File names of Windows have no case.
compiler=$(dirname "$($triple-g++-posix -print-file-name=libstdc++-6.dll)")
[ -n "$(imported)" ]
copied=yes
while [ -n "$copied" ]; do
  copied=
  for name in $(imported); do
    [ -z "$(find "$folder" -maxdepth 1 -iname "$name")" ] || continue
    found=$(find "$kit/bin" "$compiler" /usr/$triple/lib -maxdepth 1 -iname "$name" -print -quit)
    if [ -n "$found" ]; then
      cp "$found" "$folder"
      copied=yes
    fi
  done
done
find "$folder" \( -name '*.exe' -o -name '*.dll' \) -exec $triple-strip --strip-unneeded {} +

# shellcheck disable=SC2086 # word splitting and patterns are intended
cp $fonts "$folder/fonts"
cp "$translation" "$folder/translations"
cp CHANGELOG.md "$folder"
# The command interpreter finds labels reliably only if lines end as on Windows.
for text in start.cmd nightly-backup.cmd README.txt; do
  sed 's/$/\r/' "packaging/windows/$text" >"$folder/$text"
done
make_manual "$folder/manual"
for page in Zomrel zomrel-demo zomrel-shop zomrel-store; do
  mandoc -T html -O "man=%N.html" "docs/$page.1" >"$folder/manual/$page.html"
done

mkdir -p "$folder/licences"
cp "$kit"/licences/* "$folder/licences"
cp "$kit/SOURCES.txt" "$folder/licences"
# shellcheck disable=SC2086 # word splitting is intended
owners=$(owners_of $fonts $translation)
# shellcheck disable=SC2086 # word splitting is intended
copy_licences "$folder/licences" $owners gcc-mingw-w64-base mingw-w64-common libz-mingw-w64
set_times "$folder"
