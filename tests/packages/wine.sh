# shellcheck shell=sh
# What the checks under Wine share; the common functions must be loaded first.

zip=$sources/dist/zomrel-$this_version-windows-x64.zip
setup=$sources/dist/Zomrel-$this_version-setup.exe

# Wine's own Windows. It links the folders of the user to HOME, so HOME is a folder here.
export WINEPREFIX="$work/wine" HOME="$work/home" WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
drive=$WINEPREFIX/drive_c
mkdir -p "$HOME/Desktop"
if [ ! -e "$WINEPREFIX/ready" ]; then
  rm -rf "$WINEPREFIX"
  wine wineboot --init >"$work/wineboot.log" 2>&1
  wine winecfg -v win10
  wineserver --wait
  touch "$WINEPREFIX/ready"
fi
trap 'wineserver --kill 2>/dev/null || true' EXIT

# windows COMMAND...: runs a Windows program in the current folder. Its lines end like those of Linux. A program that
# crashes waits for a debugger, so its time is limited. If the variable beside is set, another program goes on running.
# A program that goes on running without that is an error, 124.
windows() {
  status=0
  timeout "${limit:-300}" wine "$@" >"$work/output.raw" 2>"$work/errors.raw" || status=$?
  [ -n "${beside:-}" ] || timeout 120 wineserver --wait || status=124
  tr -d '\r' <"$work/output.raw" >"$work/output"
  tr -d '\r' <"$work/errors.raw" >"$work/errors"
  [ "$status" -eq 0 ] || cat "$work/output" "$work/errors" >&2
  return "$status"
}

# fails_with TEXT COMMAND...: the command fails and says the text.
fails_with() {
  text=$1
  shift
  ! windows "$@" 2>/dev/null && grep -qF "$text" "$work/output" "$work/errors"
}

# ends_with STATUS COMMAND...: the command ends with this exit status.
ends_with() {
  expected=$1
  shift
  windows "$@" >/dev/null 2>&1 || true
  [ "$status" -eq "$expected" ] || {
    echo "The exit status is $status." >&2
    return 1
  }
}

# says TEXT: the last program has printed the text.
says() {
  grep -qF "$1" "$work/output"
}

# shows_main_window PROGRAM: starts the program and waits for the main window with the version in its title.
shows_main_window() {
  title=$(echo "$this_version" | sed -E 's/^([0-9]+)\.([0-9]+)\.[0-9]+\.([0-9]+)$/\1\\.\2\\.\3/')
  wine "$1" >"$work/window.log" 2>&1 &
  timeout 240 xdotool search --sync --onlyvisible --name "$title\$" >/dev/null
}

end_programs() {
  wineserver --kill || true
  wait
}

# Nothing is left of files under construction: neither beside the store nor in the folder for temporary files.
no_rest_in() {
  [ -z "$(find "$1" "$drive/users" \( -name '*zomrel-store-*' -o -name '*.zomrel-previous' \) 2>/dev/null | tee /dev/stderr)" ]
}

unpack() {
  rm -rf "$1"
  mkdir -p "$1"
  unzip -q "$zip" -d "$1"
}
