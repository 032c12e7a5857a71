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
  folder=$1
  shift
  cmake --install build/package --strip --prefix "$folder" "$@" >build/package/install.log || {
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
# /lib as well as under /usr/lib.
owners_of() {
  for file in "$@"; do
    real=$(realpath "$file")
    printf '%s\n%s\n' "$real" "${real#/usr}"
  done | xargs dpkg-query --search 2>/dev/null | cut -d: -f1 | sort -u
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
  /usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf /usr/share/fonts/truetype/liberation*/LiberationSans-*.ttf"

# Prints the libraries that the given files need, directly and indirectly, in order.
libraries_of() {
  ldd "$@" | sed -nE 's/.* => (\/[^ ]+) .*/\1/p' | sort -u
}

# copy_licences FOLDER PACKAGE...: copies the copyright file of each package, the licence texts that these files name,
# and a list of the packages and of the source packages that contain the source texts.
copy_licences() {
  folder=$1
  shift
  mkdir -p "$folder/texts"
  for package in "$@"; do
    cp "/usr/share/doc/$package/copyright" "$folder/$package.txt"
    # shellcheck disable=SC2016 # fields of dpkg-query
    dpkg-query --show --showformat='${Package} ${Version}, source package ${source:Package} ${source:Version}\n' \
      "$package"
  done >"$folder/PACKAGES.txt"
  cat "$folder"/*.txt | grep -oE '/usr/share/common-licenses/[A-Za-z0-9.+-]*[A-Za-z0-9]' | sort -u |
    while read -r text; do
      [ ! -e "$text" ] || cp --dereference "$text" "$folder/texts"
    done
}

# Replaces SHA256SUMS by the sums of this version's files.
write_checksums() {
  (
    cd dist
    find . -maxdepth 1 -type f -iname "zomrel[-_]${version}[-_]*" -printf '%P\n' | sort | xargs sha256sum >SHA256SUMS
    cat SHA256SUMS
  )
}
