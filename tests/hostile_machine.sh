#!/bin/sh
# Runs all tests on a machine that differs from the usual one:
#   tests/hostile_machine.sh fonts   after installing further fonts, which stay installed
#   tests/hostile_machine.sh load    while other processes use all cores and write to the disk
#   tests/hostile_machine.sh user    as an ordinary user with foreign settings
#   tests/hostile_machine.sh all     all three, one after the other
# Further arguments are passed to CTest (for example -R input_boxes). Run this script as root, after ./test or
# another build. ZOMREL_PRESET selects a preset other than dev.
set -eu
cd "$(dirname "$0")/.."
preset=${ZOMREL_PRESET:-dev}
build=build/$preset
tester=zomrel-tester

# These packages contain font families that systems prefer to the usual defaults (Latin, Hebrew and fixed-pitch),
# and families that replace Arial.
fonts="fonts-noto-core fonts-noto-mono fonts-roboto-unhinted fonts-open-sans fonts-lato
  fonts-cantarell fonts-freefont-ttf fonts-droid-fallback fonts-croscore fonts-crosextra-carlito
  fonts-crosextra-caladea fonts-inconsolata fonts-hack fonts-firacode fonts-jetbrains-mono
  fonts-terminus-otb fonts-linuxlibertine fonts-urw-base35 fonts-texgyre fonts-sil-gentium
  fonts-sil-ezra fonts-dejavu-extra"

run_tests() {
  ctest --preset "$preset" --parallel "$(nproc)" "$@"
}

with_fonts() {
  . cmake/packages.sh
  install_packages "$fonts"
  run_tests "$@"
}

# If this script is killed, the processes of the load end after this time.
load_limit=2h

end_load() {
  # shellcheck disable=SC2086 # one word per process
  kill $load 2>/dev/null || true
  rm -rf "$scratch"
}

with_load() {
  scratch=$(mktemp -d)
  load=
  trap end_load EXIT
  for _ in $(seq "$(nproc)"); do
    timeout "$load_limit" sh -c 'while :; do :; done' &
    load="$load $!"
  done
  timeout "$load_limit" sh -c "while :; do
      dd if=/dev/zero of='$scratch/block' bs=1M count=64 conv=fsync
    done" 2>/dev/null &
  load="$load $!"
  status=0
  run_tests "$@" || status=$?
  end_load
  trap - EXIT
  return "$status"
}

# Makes a user the owner of the build folder and of the folders in it into which the tests write.
give_results_to() {
  mkdir -p "$build/Testing" "$build/server" "$build/reliability"
  chown "$1" "$build"
  chown -R "$1" "$build/Testing" "$build/server" "$build/reliability"
}

as_user() {
  id "$tester" >/dev/null 2>&1 || useradd --system --create-home "$tester"
  if ! runuser -u "$tester" -- test -r "$PWD/CMakePresets.json"; then
    echo "The user $tester cannot read $PWD; take a folder that every user can reach." >&2
    return 1
  fi
  former=$(stat -c %u:%g "$build")
  trap 'give_results_to "$former"' EXIT
  give_results_to "$tester"
  status=0
  (
    umask 077
    runuser -u "$tester" -- env -i PATH=/usr/local/bin:/usr/bin:/bin HOME=/nonexistent \
      LANG=de_DE.UTF-8 LANGUAGE=de LC_NUMERIC=de_DE.UTF-8 TZ=Pacific/Kiritimati \
      PGHOST=nowhere.invalid PGPORT=1 PGUSER=nobody PGOPTIONS='-c search_path=none' \
      QT_SCALE_FACTOR=1.5 QT_FONT_DPI=144 QT_STYLE_OVERRIDE=windows \
      ctest --preset "$preset" --parallel "$(nproc)" "$@"
  ) || status=$?
  give_results_to "$former"
  trap - EXIT
  return "$status"
}

if [ "$(id -u)" -ne 0 ]; then
  echo "Has to be run as root: it installs packages and runs as another user." >&2
  exit 2
fi
if [ ! -e "$build/CTestTestfile.cmake" ]; then
  echo "Nothing is built in $build." >&2
  exit 2
fi
way=${1:-}
[ $# -eq 0 ] || shift
case $way in
  fonts) with_fonts "$@" ;;
  load) with_load "$@" ;;
  user) as_user "$@" ;;
  all)
    failed=
    for each in load user fonts; do
      "tests/$(basename "$0")" "$each" "$@" || failed="$failed $each"
    done
    [ -z "$failed" ] || { echo "Failed:$failed" && exit 1; }
    ;;
  *)
    sed -n '2,/^set/s/^# \{0,1\}//p' "tests/$(basename "$0")" >&2
    exit 2
    ;;
esac
