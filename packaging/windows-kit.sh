#!/bin/sh
# Builds the libraries for Windows from Debian's packages and source packages alone, and prints the folder in which they
# are. The folder lies in the cache, under a name that depends on the recipe and on the compiler. An existing kit is not
# built again; if only its archive exists, the archive is unpacked. The environment variable ZOMREL_CACHE names another
# folder than ~/.cache/zomrel.
set -eu
cd "$(dirname "$0")/.."

. cmake/packages.sh
. packaging/common.sh
# The kit does not depend on the commit. This is the date of Debian 12.
export SOURCE_DATE_EPOCH=1686355200
install_packages "$packages_run" "$packages_windows_kit" >&2
. packaging/windows/common.sh

result=$(kit_folder)
archive=$result.tar.xz
unpack() {
  rm -rf "$result.new"
  mkdir -p "$result.new"
  tar --directory="$result.new" -xJf "$archive"
  mv "$result.new" "$result"
}

if [ -d "$result" ]; then
  echo "$result"
  exit 0
fi
if [ -e "$archive" ]; then
  unpack
  echo "$result"
  exit 0
fi

# An interrupted build goes on where it stopped.
work=$result.work
kit=$work/kit
jobs=${ZOMREL_JOBS:-$(nproc)}
flags="-ffile-prefix-map=$work=."
recipe=$PWD/packaging/windows/recipe.sh
export triple toolchain work kit jobs flags
mkdir -p "$kit/bin" "$kit/lib/pkgconfig" "$kit/include" "$kit/licences" "$work/sources" "$work/logs" "$work/done"

# The package lists are the machine's own, with sources instead of programs, in a folder of their own. So the machine's
# settings stay as they are, and nobody needs to be root.
apt=$work/apt
mkdir -p "$apt/lists/partial" "$apt/cache/archives/partial"
# shellcheck disable=SC2016 # fields of apt-get
apt-get indextargets --format '$(ORIGIN) $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Identifier: Packages' |
  awk -v key=/usr/share/keyrings/debian-archive-keyring.gpg \
    '$1 == "Debian" { print "deb-src [signed-by=" key "]", $2, $3, $4 }' | sort -u >"$apt/sources.list"
apt_options="-o Dir::Etc::sourcelist=$apt/sources.list -o Dir::Etc::sourceparts=/dev/null -o Dir::State::lists=$apt/lists
  -o Dir::Cache=$apt/cache"

# fetch PACKAGE: unpacks the newest version of a source package that the archive still contains. The list may name a
# newer one than the mirror has.
fetch() {
  cd "$work/sources"
  [ ! -d "$1" ] || return 0
  if [ ! -e "$work/done/lists" ]; then
    # shellcheck disable=SC2086 # word splitting is intended
    apt-get -q $apt_options update >"$work/logs/lists" 2>&1
    touch "$work/done/lists"
  fi
  # shellcheck disable=SC2086 # word splitting is intended
  for candidate in $(apt-cache $apt_options showsrc --only-source "$1" | sed -n 's/^Version: //p' | sort -V -r -u); do
    if apt-get -q $apt_options source --only-source "$1=$candidate" >>"$work/logs/$1.source" 2>&1; then
      unpacked=$(find . -maxdepth 1 -type d -name "${1%-15}-*" | head -n 1)
      echo "$1 $candidate" >>"$kit/SOURCES.txt"
      cp "$unpacked/debian/copyright" "$kit/licences/$1.txt"
      mv "$unpacked" "$1"
      return 0
    fi
  done
  echo "The source package $1 could not be fetched; see $work/logs/$1.source." >&2
  return 1
}

# build PACKAGE FUNCTION: builds one library in its folder.
build() {
  [ ! -e "$work/done/$1" ] || return 0
  echo "Building $1 ..." >&2
  cd "$work/sources/$1"
  "$recipe" "$2" >"$work/logs/$1" 2>&1 || {
    tail -n 30 "$work/logs/$1" >&2
    echo "Building $1 failed; see $work/logs/$1." >&2
    return 1
  }
  touch "$work/done/$1"
}

"$recipe" list | while read -r package function; do
  fetch "$package"
done
"$recipe" list | while read -r package function; do
  build "$package" "$function" </dev/null
done

# The kit works in every folder.
sed -i "s|$kit|\${pcfiledir}/../..|g" "$kit"/lib/pkgconfig/*.pc
rm -rf "$kit/lib/"*.la "$kit/share" "$kit/doc"

tar --directory="$kit" --sort=name --owner=root:0 --group=root:0 --mtime="@$SOURCE_DATE_EPOCH" --create . |
  xz --threads=0 -6 >"$archive.new"
mv "$archive.new" "$archive"
unpack
cd /
rm -rf "$work"
echo "$result"
