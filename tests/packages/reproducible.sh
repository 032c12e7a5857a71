#!/bin/sh
# Builds the commit a second time, in a folder with another name, without the compiler's cache, with another time zone,
# locale and file mode mask. Both builds must have the same bytes.
set -eu
. "$(dirname "$0")/common.sh"

clone="$work/a second folder"
rm -rf "$clone"
git clone --quiet --no-hardlinks "$sources" "$clone"
git -C "$clone" reset --quiet --hard "$commit"
(
  umask 027
  cd "$clone"
  CCACHE_DISABLE=1 TZ=Asia/Jerusalem LC_ALL=C ./package
)
expect "two builds in different folders have the same bytes" cmp "$work/this/SHA256SUMS" "$clone/dist/SHA256SUMS"
expect "SHA256SUMS belongs to the packages" sh -c "cd '$work/this' && sha256sum --quiet --check SHA256SUMS"
rm -rf "$clone"
