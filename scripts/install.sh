#!/usr/bin/env bash
# install.sh LIST: installs those packages of a list that are missing.
set -euo pipefail
cd "$(dirname "$0")/.."

wanted=$(grep -v '^#' "$1")
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
