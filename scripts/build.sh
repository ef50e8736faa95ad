#!/usr/bin/env bash
# build.sh PRESET [TARGET...]: installs the missing packages, configures the preset, builds it.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
shift

wanted=$(grep -v '^#' scripts/packages.txt)
# dpkg-query names on standard error what it does not know at all; those are missing, too.
missing=$(comm -23 <(sort -u <<<"$wanted") \
    <(dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' $wanted 2>/dev/null | sed -n 's/^ii *//p' | sort -u))
if [ -n "$missing" ]; then
    echo "Installing: $(tr '\n' ' ' <<<"$missing")"
    sudo=
    if [ "$(id -u)" -ne 0 ]; then
        sudo=sudo
    fi
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends $missing >/dev/null
fi

if [ ! -f "build/$preset/build.ninja" ]; then
    cmake --preset "$preset" >/dev/null
fi
# Without targets, ninja builds all of them.
ninja -C "build/$preset" --quiet "$@" | sed '/^ninja: no work to do\.$/d'
