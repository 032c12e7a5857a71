#!/bin/sh
# Unpacks the portable folder in a clean system without Qt and without fonts, uses it, and unpacks the next version over
# it.
set -eu
. "$(dirname "$0")/common.sh"

platform=linux-x86_64
make_root
cp "$work/this/zomrel-$this_version-$platform.tar.xz" "$work/next/zomrel-$next_version-$platform.tar.xz" "$root/tmp"
folder=$root/home/worker/zomrel

# Prints the libraries that the programs and plugins load from elsewhere, without those that every system has.
foreign_libraries() {
  as_worker "find zomrel -maxdepth 1 -type f -perm /111 ! -name start | xargs ldd" |
    grep -E '=>|not found' | grep -vE '=> /home/worker/zomrel/lib/|lib(c|m|dl|rt|pthread|resolv|gcc_s|stdc\+\+|cups|expat)\.so' || true
}

expect "the system has no Qt and no Hebrew font" \
  [ -z "$(in_root dpkg-query --show 2>/dev/null | grep -E '^(libqt|culmus|fonts-)')" ]
expect "the archive is unpacked" as_worker "tar --extract --file /tmp/zomrel-$this_version-$platform.tar.xz"
expect "the archive contains no store" is_missing "$folder/Aluminium.mdb"
expect "the archive contains no logo beside the program" is_missing "$folder/Logo.jpg"
expect "no library is taken from the system" [ -z "$(foreign_libraries)" ]
expect "the first start makes a store and shows the window" shows_window zomrel/start "$this_version"
expect "an order is entered" makes_order zomrel/zomrel-demo zomrel/Aluminium.mdb
expect "its report contains the cuts" has_order "$root/home/worker/out/order-1.pdf"
expect "the store is sound" as_worker "zomrel/zomrel-store check zomrel/Aluminium.mdb"

as_worker "zomrel/zomrel-store backup zomrel/Aluminium.mdb zomrel/backup.mdb"
echo "the workshop's own" >"$folder/Logo.jpg"
before=$(cat "$folder/Aluminium.mdb" "$folder/backup.mdb" "$folder/Logo.jpg" | sha256sum)
kept() {
  [ "$(cat "$folder/Aluminium.mdb" "$folder/backup.mdb" "$folder/Logo.jpg" | sha256sum)" = "$before" ]
}
expect "the next version is unpacked over it" as_worker "tar --extract --file /tmp/zomrel-$next_version-$platform.tar.xz"
expect "store, backup and logo are kept byte for byte" kept
expect "the next version shows its window" shows_window zomrel/start "$next_version"
expect "starting the next version keeps them, too" kept
