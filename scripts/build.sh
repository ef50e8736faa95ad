#!/usr/bin/env bash
# build.sh PRESET [TARGET...]: installs the missing packages, configures the preset, builds it.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
shift

packages=scripts/packages.txt
if [ "$(uname)" = Darwin ]; then
    packages=scripts/packages-mac.txt
fi
scripts/install.sh "$packages"
if [ ! -f "build/$preset/build.ninja" ]; then
    cmake --preset "$preset" >/dev/null
fi
# Without targets, ninja builds all of them.
ninja -C "build/$preset" --quiet "$@" | sed '/^ninja: no work to do\.$/d'
