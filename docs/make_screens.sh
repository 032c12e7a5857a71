#!/bin/sh
# make_screens.sh TEST: makes the contact sheets in docs/screens, one for each form and dialog, from the pictures of the
# screens test: three sizes of the screen in rows, three scales in columns. Needs xvfb, openbox and imagemagick.
set -eu
cd "$(dirname "$0")/.."
pictures=$(mktemp -d)
trap 'rm -rf "$pictures"' EXIT
ZOMREL_SCREEN_PICTURES=$pictures tests/shell/on_display.sh "$1"
mkdir -p docs/screens
for form in main order picker search view series kinds preview help bars remake box; do
  montage "$pictures/$form"-*-he_IL.png -label '%f' -tile 3x3 -geometry '600x360>+6+6' -background '#808080' miff:- |
    convert miff:- +dither -colors 32 -strip -define png:compression-level=9 "png8:docs/screens/$form.png"
done
