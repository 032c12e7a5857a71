#!/bin/sh
# Builds the tests that run on Windows and runs them.
set -eu
. "$(dirname "$0")/common.sh"
cd "$sources"
. packaging/common.sh
. packaging/windows/common.sh
kit=$(packaging/windows-kit.sh)
. tests/packages/wine.sh

build=$sources/build/windows-dev
ZOMREL_WINDOWS_KIT=$kit cmake --preset windows-dev -DCMAKE_CROSSCOMPILING_EMULATOR=wine >"$work/configure.log"
cmake --build --preset windows-dev

# The libraries and plugins are found without being copied beside each test.
compiler=$(dirname "$($triple-g++-posix -print-file-name=libstdc++-6.dll)")
WINEPATH="$(winepath --windows "$kit/bin");$(winepath --windows "$compiler");$(winepath --windows /usr/$triple/lib)"
# Wine removes the variables of the Linux toolkit from the environment, unless their names begin with WINE.
WINEQT_PLUGIN_PATH=$(winepath --windows "$kit/plugins")
export WINEPATH WINEQT_PLUGIN_PATH
expect "the tests pass" ctest --test-dir "$build" --output-on-failure
