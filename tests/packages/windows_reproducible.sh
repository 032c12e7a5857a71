#!/bin/sh
# Builds the commit a second time, in a folder with another name, without the compiler's cache, with another time zone
# and locale. Both builds must have the same bytes.
set -eu
. "$(dirname "$0")/common.sh"

clone="$work/a second folder"
rm -rf "$clone"
git clone --quiet --no-hardlinks "$sources" "$clone"
git -C "$clone" reset --quiet --hard "$commit"
(
  umask 027
  cd "$clone"
  CCACHE_DISABLE=1 TZ=Asia/Jerusalem LC_ALL=C ./package windows
)
for name in "Zomrel-$this_version-setup.exe" "zomrel-$this_version-windows-x64.zip"; do
  expect "two builds of $name have the same bytes" cmp "$sources/dist/$name" "$clone/dist/$name"
done
expect "SHA256SUMS belongs to the packages" sh -c "cd '$clone/dist' && sha256sum --quiet --check SHA256SUMS"
rm -rf "$clone"
