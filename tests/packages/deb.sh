#!/bin/sh
# Installs the Debian package in a clean system, uses it, upgrades it, removes it and purges it.
set -eu
. "$(dirname "$0")/common.sh"

this=$work/this/zomrel_${this_version}_amd64.deb
next=$work/next/zomrel_${next_version}_amd64.deb
expect "lintian finds no error" lintian --allow-root --fail-on error "$this"

units_are_valid() {
  in_root_install systemd
  in_root systemd-analyze verify --man=no zomrel-backup.service zomrel-backup.timer
}

# Runs the service's command as the service's user, and checks the backup.
nightly_backup() {
  service=$root/lib/systemd/system/zomrel-backup.service
  # shellcheck disable=SC2046 # word splitting is intended
  in_root runuser -u "$(sed -n 's/^User=//p' "$service")" -- $(sed -n 's/^ExecStart=//p' "$service") || return 1
  for backup in "$root"/var/backups/zomrel/*.mdb; do
    in_root zomrel-store check "${backup#"$root"}" || return 1
  done
}

make_root
store=$root/var/lib/zomrel/Aluminium.mdb
link=$root/etc/zomrel/Aluminium.mdb
cp "$this" "$next" "$root/tmp"

expect "the package is installed without a question" in_root_install "/tmp/${this##*/}"
expect "the first configuration makes a store for the group" \
  [ "$(in_root stat --format='%a %U %G' /var/lib/zomrel/Aluminium.mdb)" = "660 zomrel zomrel" ]
expect "new files in the store's folder get the group" \
  [ "$(in_root stat --format='%a %U %G' /var/lib/zomrel)" = "2770 zomrel zomrel" ]
expect "the desktop file is valid" desktop-file-validate "$root/usr/share/applications/zomrel.desktop"
expect "the AppStream data is valid" \
  appstreamcli validate --no-net --override cid-desktopapp-is-not-rdns=info "$root/usr/share/metainfo/zomrel.metainfo.xml"
expect "the units are valid" units_are_valid
for page in Zomrel zomrel-store zomrel-shop zomrel-demo; do
  expect "$page has a manual page" [ -s "$root/usr/share/man/man1/$page.1.gz" ]
done

in_root adduser --quiet worker zomrel
expect "Zomrel shows its window" shows_window Zomrel "$this_version"
expect "an order is entered through the link" makes_order zomrel-demo /etc/zomrel/Aluminium.mdb
expect "its report contains the cuts" has_order "$root/home/worker/out/order-1.pdf"
expect "the store is sound" as_worker "zomrel-store check /etc/zomrel/Aluminium.mdb"
expect "the nightly backup works" nightly_backup

before=$(sum "$store")
echo "the workshop's own" >"$root/etc/zomrel/Logo.jpg"
link_before=$(sum "$link")
backup_before=$(cat "$root"/var/backups/zomrel/* | sha256sum)
kept() {
  unchanged "$store" "$before" && unchanged "$link" "$link_before" &&
    [ "$(cat "$root"/var/backups/zomrel/* | sha256sum)" = "$backup_before" ]
}

expect "the next version is installed without a question" in_root_install "/tmp/${next##*/}"
expect "the upgrade keeps store, link and backups byte for byte" kept
expect "the upgrade keeps the workshop's logo" grep -q own "$root/etc/zomrel/Logo.jpg"
expect "the next version shows its window" shows_window Zomrel "$next_version"
expect "starting the next version keeps them, too" kept

in_root_install adduser
in_root apt-get -q -y remove zomrel >"$work/apt.log" 2>&1
expect "the program is removed" is_missing "$root/usr/lib/zomrel"
expect "the removal keeps store, link and backups byte for byte" kept
in_root apt-get -q -y purge zomrel >"$work/apt.log" 2>&1
expect "purging removes the link" is_missing "$link"
expect "purging keeps the store byte for byte" unchanged "$store" "$before"
expect "the package can be installed again" in_root_install "/tmp/${next##*/}"
expect "installing again keeps the store byte for byte" unchanged "$store" "$before"
