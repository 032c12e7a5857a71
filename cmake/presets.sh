#!/bin/sh
# Configures the presets that no other check uses. They are configured without the tests, so a mistake in the
# conditions of the build files may break them alone.
set -eu
cd "$(dirname "$0")/.."
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
for preset in release package bench; do
  cmake --preset "$preset" -B "$folder/$preset" > "$folder/$preset.log" 2>&1 || { cat "$folder/$preset.log"; exit 1; }
done
