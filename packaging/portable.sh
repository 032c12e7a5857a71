#!/bin/sh
# portable.sh STAGE: makes the portable folder from what packaging/linux.sh has installed into the folder STAGE. It
# contains everything but the C and C++ run-time libraries, which every system has, and libcups and libexpat, which every
# desktop has. The archive contains neither a store nor a logo beside the program, so unpacking it over an older version
# keeps the user's own.
set -eu
cd "$(dirname "$0")/.."
. packaging/common.sh
stage=${1#"$PWD"/} # Relative, because the name of the sources' folder may contain blanks.

# The oldest C library on which the folder runs, that of Ubuntu 22.04.
oldest_glibc=2.35
# The parts of the C and C++ run-time libraries.
runtime_libraries='/(ld-linux-x86-64|lib(c|m|dl|rt|pthread|resolv|util|nsl|gcc_s|stdc\+\+))\.so'
# Every desktop has these libraries, and those of Debian 12 need a newer C library.
desktop_libraries='/lib(cups|expat)\.so'

folder=$stage/portable/zomrel
mkdir -p "$folder/lib" "$folder/fonts" "$folder/translations"
for file in "$stage"/program/*; do
  [ ! -x "$file" ] || cp "$file" "$folder"
done

for plugin in $loaded_plugins; do
  mkdir -p "$folder/plugins/${plugin%/*}"
  cp "$system_libraries/qt6/plugins/$plugin" "$folder/plugins/$plugin"
done

# A program's own path for libraries also applies to the libraries and plugins that it loads.
programs=$(find "$folder" -maxdepth 1 -type f | sort)
for program in $programs; do
  patchelf --force-rpath --set-rpath "\$ORIGIN/lib" "$program"
done

# shellcheck disable=SC2046,SC2086 # word splitting is intended
libraries=$(libraries_of $(find "$stage/program" -type f -perm /111) "$loaded_libraries" \
  $(find "$folder/plugins" -name '*.so') | grep -vE "$runtime_libraries|$desktop_libraries")
for library in $libraries "$loaded_libraries"; do
  cp --dereference "$library" "$folder/lib"
done

# shellcheck disable=SC2086 # word splitting and patterns are intended
cp $fonts "$folder/fonts"
cp "$translation" "$folder/translations"

# The first start copies the logo beside the program, where the user may replace it.
mkdir -p "$folder/delivered"
cp data/Logo.jpg "$folder/delivered"
cp packaging/portable/start "$folder"
cp packaging/portable/README.txt CHANGELOG.md "$folder"
cp -r "$stage/manual" "$folder/manual"
cp -r "$stage/desktop/share/man/man1" "$folder/man1"
plugins=$(find "$folder/plugins" -name '*.so' -printf "$system_libraries/qt6/plugins/%P\n")
# shellcheck disable=SC2086 # word splitting is intended
owners=$(owners_of $libraries $loaded_libraries $(cat build/package/contained_libraries) $fonts $translation $plugins)
# shellcheck disable=SC2086 # word splitting is intended
copy_licences "$folder/licences" $owners

# Fails if a file needs a newer C library.
too_new=$(find "$folder" -type f \( -name '*.so*' -o -perm /111 \) | sort | while read -r file; do
  needed=$(objdump --dynamic-syms "$file" 2>/dev/null | grep -oE 'GLIBC_[0-9.]+' | sort --version-sort | tail -n 1)
  newest=$(printf '%s\n' "${needed#GLIBC_}" "$oldest_glibc" | sort --version-sort | tail -n 1)
  [ "$newest" = "$oldest_glibc" ] || echo "${file#"$folder"/} needs $needed."
done)
if [ -n "$too_new" ]; then
  echo "The portable folder must run with version $oldest_glibc of the C library:" >&2
  echo "$too_new" >&2
  exit 1
fi

set_times "$folder"
archive=dist/zomrel-$version-$platform.tar.xz
tar --directory="$stage/portable" --sort=name --owner=root:0 --group=root:0 --mtime="@$SOURCE_DATE_EPOCH" \
  --format=gnu --create zomrel | xz --threads=2 -6 >"$archive.new"
mv "$archive.new" "$archive"
