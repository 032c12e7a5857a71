#!/bin/sh
# deb.sh STAGE: makes the Debian package from what packaging/linux.sh has installed into the folder STAGE. debhelper
# does what all Debian packages have in common; packaging/debian/ contains the rest.
set -eu
cd "$(dirname "$0")/.."
. packaging/common.sh
stage=$1
work=$PWD/build/package/deb
rm -rf "$work"
mkdir -p "$work"
cp -r packaging/debian "$work/debian"

cat >"$work/debian/changelog" <<CHANGELOG
zomrel ($version) unstable; urgency=medium

  * Version $version. CHANGELOG.md in this folder lists the changes.

 -- $(sed -n 's/^Maintainer: //p' packaging/debian/control)  $(date --date="@$SOURCE_DATE_EPOCH" -R)
CHANGELOG

# The program looks for its store and its logo beside itself. Both are links into /etc, where they can be changed.
root=$work/root
program=$root/usr/lib/zomrel
mkdir -p "$program" "$root/usr/bin" "$root/etc/zomrel" "$root/usr/share/doc/zomrel"
for file in "$stage"/program/*; do
  [ -x "$file" ] || continue
  cp "$file" "$program"
  ln -s "../lib/zomrel/${file##*/}" "$root/usr/bin/${file##*/}"
done
cp -r "$stage/desktop/share" "$root/usr"
cp -r "$stage/manual" CHANGELOG.md "$root/usr/share/doc/zomrel"
cp packaging/debian/Aluminium.mdb data/Logo.jpg "$root/etc/zomrel"
ln -s /etc/zomrel/Aluminium.mdb /etc/zomrel/Logo.jpg "$program"

linked=$(directly_linked "$program")
# shellcheck disable=SC2086 # word splitting is intended
owners=$(owners_of $fonts $translation $loaded_libraries $(cat build/package/contained_libraries) $linked)
# shellcheck disable=SC2086 # word splitting is intended
copy_licences "$root/usr/share/doc/zomrel/third-party" $owners

(cd "$work" && dpkg-buildpackage --build=binary --no-sign --no-check-builddeps) >"$work/log" 2>&1 || {
  cat "$work/log"
  exit 1
}
mv "build/package/zomrel_${version}_amd64.deb" dist
