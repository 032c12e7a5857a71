# shellcheck shell=sh
# What the scripts of this folder share.

sources=$(cd "$(dirname "$0")/../.." && pwd)
work=$ZOMREL_PACKAGES_WORK
commit=$(git -C "$sources" rev-parse HEAD)
this_version=$(git -C "$sources" show "$commit:VERSION")
# The same version with a higher last part.
next_version=${this_version%.*}.$((${this_version##*.} + 1))
export LC_ALL=C.UTF-8

failed() {
  echo "FAILED: $*" >&2
  exit 1
}

# expect WHAT COMMAND...: runs the command and ends the check if it fails.
expect() {
  what=$1
  shift
  "$@" || failed "$what"
  echo "ok: $what"
}

suite=${ZOMREL_ROOT_SUITE:-$(. /etc/os-release && echo "$VERSION_CODENAME")}

# Prints the mirror from which apt installs the system here.
mirror() {
  # shellcheck disable=SC2016 # a field of apt-get
  apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' "Codename: $suite" | head -n 1
}

# make_clean FOLDER: makes a clean system with a display, the libraries of every desktop and the user "worker". Services are not started in it.
make_clean() {
  root=$1
  rm -rf "$root"
  debootstrap --variant=minbase --components="${ZOMREL_ROOT_COMPONENTS:-main}" "$suite" "$root" "${ZOMREL_ROOT_MIRROR:-$(mirror)}" \
    >"$work/debootstrap.log" 2>&1 || {
    tail "$work/debootstrap.log"
    failed "debootstrap"
  }
  printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
  chmod 755 "$root/usr/sbin/policy-rc.d"
  cp /etc/resolv.conf "$root/etc/resolv.conf"
  mount -t proc proc "$root/proc"
  in_root apt-get -q update >"$work/apt.log" 2>&1
  in_root_install xvfb xauth xdotool xz-utils libcups2 libexpat1
  in_root useradd --create-home worker
  umount "$root/proc"
  touch "$root.done"
}

# make_root: makes the folder $root, a copy of the clean system. The end of the script removes it.
make_root() {
  clean=$work/clean-$suite
  [ -e "$clean.done" ] || make_clean "$clean"
  root=$(mktemp -d "$work/root.XXXXXX")
  trap remove_root EXIT
  trap 'exit 1' HUP INT TERM
  cp -a "$clean/." "$root"
  # The program loads plugins only from file systems that it knows, and finds only mounted ones.
  mount --bind "$root" "$root"
  mount -t proc proc "$root/proc"
  in_root apt-get -q update >"$work/apt.log" 2>&1
}

remove_root() {
  ! mountpoint -q "$root/proc" || umount "$root/proc"
  # A process of the display may still be ending, so the mount is only detached.
  ! mountpoint -q "$root" || umount --lazy "$root"
  rm -rf --one-file-system "$root"
}

in_root() {
  chroot "$root" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
    http_proxy="${http_proxy:-}" "$@"
}

# Installs packages without a question: standard input is empty.
in_root_install() {
  in_root apt-get -q -y --no-install-recommends install "$@" >"$work/apt.log" 2>&1 </dev/null || {
    tail -n 30 "$work/apt.log"
    failed "apt-get install $*"
  }
}

# as_worker COMMAND: runs a shell command as an ordinary user in a new session, so that its new groups count.
as_worker() {
  in_root setsid --wait runuser --login worker --command "$1"
}

# shows_window PROGRAM VERSION: starts the program on a display of its own and waits for the main window with the
# version in its title: its first, second and fourth part.
shows_window() {
  title=$(echo "$2" | sed -E 's/^([0-9]+)\.([0-9]+)\.[0-9]+\.([0-9]+)$/\1\\.\2\\.\3/')
  as_worker "timeout 300 xvfb-run --auto-servernum sh -c '
    $1 & program=\$!
    timeout 240 xdotool search --sync --onlyvisible --name \"$title\\\$\" >/dev/null; found=\$?
    kill \$program; exit \$found'"
}

# makes_order PROGRAM STORE: enters one order into the store and writes its report to the worker's folder out.
makes_order() {
  cp "$sources/tests/packages/opening.csv" "$root/tmp"
  as_worker "rm -rf out && timeout 300 xvfb-run --auto-servernum $1 /tmp/opening.csv --store $2 --out out" >"$work/cuts"
}

# has_order PDF: the report contains the cuts that follow from the opening, and is set in the forms' font.
has_order() {
  pdftotext -layout "$1" "$work/order.txt" || return 1
  for figure in 119.4 99.4 58.6 93.5 50.2 80.3 58.8 93.1; do
    grep -qF "$figure" "$work/order.txt" || {
      echo "$figure is missing in the report."
      return 1
    }
  done
  pdffonts "$1" | grep -q David
}

sum() {
  sha256sum "$1" | cut -d' ' -f1
}

# unchanged FILE SUM
unchanged() {
  [ "$(sum "$1")" = "$2" ]
}

is_missing() {
  [ ! -e "$1" ] && [ ! -L "$1" ]
}
