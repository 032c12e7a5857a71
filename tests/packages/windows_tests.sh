#!/bin/sh
# Builds the tests that run on Windows and runs them, with stores in files and on a server.
set -eu
. "$(dirname "$0")/common.sh"
cd "$sources"
. packaging/common.sh
. packaging/windows/common.sh
kit=$(packaging/windows-kit.sh)
. tests/packages/wine.sh
. tests/packages/server.sh

build=$sources/build/windows-dev
ZOMREL_WINDOWS_KIT=$kit cmake --preset windows-dev -DCMAKE_CROSSCOMPILING_EMULATOR=wine >"$work/configure.log"
cmake --build --preset windows-dev
find "$build/tests" -name '*_test.txt' -delete -o -name '*_journey.txt' -delete

# The tests create their databases on this server.
start_server zomrel host fsync=off
mkdir -p "$build/server"
printf '127.0.0.1\n%s\n' "$port" >"$build/server/place"

# The libraries, plugins and fonts are found without being copied beside each test.
compiler=$(dirname "$($triple-g++-posix -print-file-name=libstdc++-6.dll)")
WINEPATH="$(winepath --windows "$kit/bin");$(winepath --windows "$compiler");$(winepath --windows /usr/$triple/lib)"
mkdir -p "$work/fonts"
# shellcheck disable=SC2086 # word splitting and patterns are intended
cp $fonts "$work/fonts"
# Wine removes the variables of the Linux toolkit from the environment, unless their names begin with WINE.
WINEQT_PLUGIN_PATH=$(winepath --windows "$kit/plugins")
WINEQT_QPA_PLATFORM=offscreen
WINEQT_QPA_FONTDIR=$(winepath --windows "$work/fonts")
export WINEPATH WINEQT_PLUGIN_PATH WINEQT_QPA_PLATFORM WINEQT_QPA_FONTDIR

# Qt Test writes to files here. On failure their messages are shown.
pass() {
  ctest --test-dir "$build" --no-tests=error --output-on-failure --parallel "$(nproc)" "$@" || {
    find "$build/tests" \( -name '*_test.txt' -o -name '*_journey.txt' \) \
      -exec grep -A 3 -E '^(FAIL!|QFATAL|XPASS)' {} + >&2
    return 1
  }
}

# The arguments of CTest, for example -R dao, can be set for a shorter run.
# shellcheck disable=SC2086 # word splitting is intended
expect "the tests pass" pass ${ZOMREL_WINDOWS_CTEST:-}
