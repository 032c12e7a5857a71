# shellcheck shell=sh
# The Debian packages that this system is built, tested and examined with. A word a|b is met by
# either of the packages; the first is installed where neither is there.

# What ./run needs: to build, to start, and the fonts and translations that the screens use. A server
# is none of it: its client library is all that a station has of it.
packages_run="g++ cmake ninja-build pkgconf|pkg-config qt6-base-dev libpq-dev libqt6sql6-sqlite
  mdbtools-dev qt6-translations-l10n culmus fonts-dejavu-core
  fonts-liberation2|fonts-liberation"

# What ./test needs besides.
packages_test="libgtest-dev libgmock-dev xvfb xauth xdotool poppler-utils
  postgresql-15 openssl"

# What .ci/run needs besides both.
packages_ci="clang libclang-rt-14-dev clang-tidy clang-format cppcheck gcovr libbenchmark-dev"

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

# install_packages WORD...: installs what is missing and nothing else; silent and without the
# network where nothing is.
install_packages() {
  # shellcheck disable=SC2046,SC2068 # words are split on purpose
  set -- $(missing_packages $@)
  if [ $# -eq 0 ]; then
    return 0
  fi
  echo "Installing: $*"
  # The package lists may be missing or old: they are fetched when a first try fails.
  apt_get install --no-install-recommends "$@" ||
    { apt_get update && apt_get install --no-install-recommends "$@"; } || {
    echo "Could not install: $*" >&2
    return 1
  }
}
