# shellcheck shell=sh
# What the scripts of this folder share. They run in the folder of the sources.

version=$(head -n 1 VERSION)
platform=linux-x86_64

# Everything that could differ between two builds of the same commit.
umask 022
export LC_ALL=C.UTF-8 TZ=UTC
unset DEB_BUILD_OPTIONS TAR_OPTIONS XZ_DEFAULTS XZ_OPT
if [ -z "${SOURCE_DATE_EPOCH:-}" ]; then
  # Sources without a history have the time of their newest change notes.
  SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2>/dev/null || stat --format=%Y CHANGELOG.md)
fi
export SOURCE_DATE_EPOCH

# install_quietly FOLDER [OPTION...]: installs the build into the folder, without symbols.
install_quietly() {
  installed=$1
  shift
  cmake --install build/package --strip --prefix "$installed" "$@" >build/package/install.log || {
    cat build/package/install.log
    return 1
  }
}

# Gives all files of a folder the time of the commit.
set_times() {
  find "$1" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
}

# make_manual FOLDER: writes the user manual as a page that every browser shows, with its pictures.
make_manual() {
  mkdir -p "$1"
  {
    printf '<!DOCTYPE html>\n<html><head><meta charset="utf-8"><title>Zomrel</title>\n<style>\n'
    cat packaging/manual.css
    printf '</style></head><body>\n'
    cmark-gfm --unsafe --extension table docs/manual.md
    printf '</body></html>\n'
  } >"$1/manual.html"
  cp docs/*.png "$1"
}

# Prints the names of the Debian packages that own the given files, each name once. Libraries may be registered under
# /lib as well as under /usr/lib. Fails if a file has no owner.
owners_of() {
  owners=
  for file in "$@"; do
    real=$(realpath "$file")
    owner=$(dpkg-query --search "$real" 2>/dev/null) || owner=$(dpkg-query --search "${real#/usr}" 2>/dev/null) || {
      echo "No Debian package owns $file." >&2
      return 1
    }
    owners="$owners ${owner%%:*}"
  done
  # shellcheck disable=SC2086 # word splitting is intended
  printf '%s\n' $owners | sort -u
}

# The libraries and plugins of Qt that the programs load while they run. The linker does not know them.
system_libraries=/usr/lib/x86_64-linux-gnu
loaded_libraries=$system_libraries/libpq.so.5
loaded_plugins="platforms/libqxcb.so platforms/libqoffscreen.so imageformats/libqjpeg.so sqldrivers/libqsqlite.so
  printsupport/libcupsprintersupport.so platforminputcontexts/libcomposeplatforminputcontextplugin.so
  platforminputcontexts/libibusplatforminputcontextplugin.so"

# Qt's Hebrew texts, and the fonts that the forms name, with their substitutes.
translation=/usr/share/qt6/translations/qtbase_he.qm
fonts="/usr/share/fonts/truetype/culmus/David*.otf /usr/share/fonts/truetype/culmus/FrankRuehl*.ttf
  /usr/share/fonts/truetype/culmus/Nachlieli*.otf /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
  /usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf /usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf
  /usr/share/fonts/truetype/liberation*/LiberationSans-*.ttf"

# Prints the libraries that the given files need, directly and indirectly, in order.
libraries_of() {
  ldd "$@" | sed -nE 's/.* => (\/[^ ]+) .*/\1/p' | sort -u
}

# directly_linked FOLDER: prints the libraries that the programs of the folder name themselves. The loader belongs to
# the C library.
directly_linked() {
  all=$(find "$1" -type f -perm /111 -exec ldd {} + | sed -nE 's/.* => (\/[^ ]+) .*/\1/p' | sort -u)
  for name in $(find "$1" -type f -perm /111 -exec objdump --private-headers {} + | sed -n 's/^ *NEEDED *//p' |
    grep -v '^ld-linux' | sort -u); do
    printf '%s\n' "$all" | grep "/$name\$" || {
      echo "The library $name is missing." >&2
      return 1
    }
  done
}

# copy_licences FOLDER PACKAGE...: copies the copyright file of each package, the licence texts that these files name,
# and a list of the packages and of the source packages that contain the source texts.
copy_licences() {
  licences=$1
  shift
  mkdir -p "$licences/texts"
  for package in "$@"; do
    cp "/usr/share/doc/$package/copyright" "$licences/$package.txt"
    # shellcheck disable=SC2016 # fields of dpkg-query
    dpkg-query --show --showformat='${Package} ${Version}, source package ${source:Package} ${source:Version}\n' \
      "$package"
  done >"$licences/PACKAGES.txt"
  cat "$licences"/*.txt | grep -oE '/usr/share/common-licenses/[A-Za-z0-9.+-]*[A-Za-z0-9]' | sort -u |
    while read -r text; do
      [ ! -e "$text" ] || cp --dereference "$text" "$licences/texts"
    done
}

# The names of all packages of a version.
package_names() {
  printf '%s\n' "zomrel_$1_amd64.deb" "zomrel-$1-$platform.tar.xz" "Zomrel-$1-setup.exe" "zomrel-$1-windows-x64.zip"
}

# remove_packages PATTERN...: removes earlier packages of these kinds, so that no build leaves an old one beside the new
# one. The patterns are package names in which * stands for the version.
remove_packages() {
  mkdir -p dist
  for pattern in "$@"; do
    find dist -maxdepth 1 -type f -name "$pattern" -delete
  done
}

# Replaces SHA256SUMS by the sums of this version's packages.
write_checksums() {
  (
    cd dist
    package_names "$version" | sort | while read -r name; do
      [ ! -e "$name" ] || sha256sum "$name"
    done >SHA256SUMS
    cat SHA256SUMS
  )
}
