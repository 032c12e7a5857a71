#!/bin/sh
# Makes the packages of the commit, and those of a version with a higher number, from a clone of the sources. They lie
# in the folders this/ and next/ of the working folder.
set -eu
. "$(dirname "$0")/common.sh"

clone=$work/sources
[ -d "$clone" ] || git clone --quiet --no-hardlinks "$sources" "$clone"
git -C "$clone" fetch --quiet origin "$commit"
git -C "$clone" reset --quiet --hard "$commit"
rm -rf "$clone/dist" "$work/this" "$work/next"
(cd "$clone" && ./package)
mv "$clone/dist" "$work/this"

echo "$next_version" >"$clone/VERSION"
(cd "$clone" && ./package)
mv "$clone/dist" "$work/next"
