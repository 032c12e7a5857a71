# shellcheck shell=sh
# The Debian packages that are needed to build, test and check this system. A word a|b is satisfied by
# either package; the first one is installed if both are missing.

# Needed by ./run: the build, the program, and the fonts and translations of the screens. A station
# needs no server, only its client library.
packages_run="g++ cmake ninja-build pkgconf|pkg-config qt6-base-dev libpq-dev libqt6sql6-sqlite
  coinor-libcbc-dev coinor-libclp-dev coinor-libosi-dev coinor-libcoinutils-dev
  libxlsxwriter-dev libzint-dev
  mdbtools-dev qt6-translations-l10n culmus fonts-dejavu-core
  fonts-liberation2|fonts-liberation"

# Needed by ./test in addition. The last line is for the tests of screen readers.
packages_test="libgtest-dev libgmock-dev libsqlite3-dev xvfb xauth xdotool poppler-utils
  postgresql-15 openssl python3-openpyxl zbar-tools
  qt6-base-private-dev dbus-daemon at-spi2-core gir1.2-atspi-2.0 python3-gi openbox"

# Needed by .ci/run in addition to both.
packages_ci="clang libclang-rt-14-dev clang-tidy clang-format cppcheck gcovr libbenchmark-dev"

# Needed by ./package in addition to packages_run, and to check what it makes.
packages_package="binutils cmark-gfm debhelper file patchelf xz-utils"
packages_package_check="appstream debootstrap desktop-file-utils git lintian poppler-utils"

# Needed by ./package windows-kit in addition to packages_run.
packages_windows_kit="g++-mingw-w64-x86-64-posix libz-mingw-w64-dev binutils dpkg-dev
  make perl tcl patch bison flex xz-utils"

# Needed by ./package windows in addition to both, and to check what it makes.
packages_windows="nsis zip cmark-gfm icoutils mandoc"
packages_windows_check="wine wine64 xvfb xauth xdotool imagemagick poppler-utils fonts-dejavu-core
  git googletest openssl postgresql-15 unzip"

is_installed() {
  dpkg-query --show --showformat='${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

# Prints the packages to install for the given words.
missing_packages() {
  for word in "$@"; do
    met=
    for package in $(echo "$word" | tr '|' ' '); do
      if is_installed "$package"; then
        met=1
      fi
    done
    if [ -z "$met" ]; then
      echo "${word%%|*}"
    fi
  done
}

apt_get() {
  if [ "$(id -u)" -eq 0 ]; then
    env DEBIAN_FRONTEND=noninteractive apt-get -q -y "$@"
  elif command -v sudo >/dev/null; then
    sudo env DEBIAN_FRONTEND=noninteractive apt-get -q -y "$@"
  else
    echo "Installing packages needs root or sudo." >&2
    return 1
  fi
}

# install_packages WORD...: installs missing packages only. If none is missing it prints nothing and
# does not use the network.
install_packages() {
  # shellcheck disable=SC2046,SC2068 # word splitting is intended
  set -- $(missing_packages $@)
  if [ $# -eq 0 ]; then
    return 0
  fi
  echo "Installing: $*"
  # If the first attempt fails, the package lists are updated, because they may be missing or old.
  apt_get install --no-install-recommends "$@" ||
    { apt_get update && apt_get install --no-install-recommends "$@"; } || {
    echo "Could not install: $*" >&2
    return 1
  }
}
