#!/usr/bin/env bash
# window-figures.sh [SECONDS]: measures the program with its window among processes of its own, so that
# those of the machine neither count nor disturb.
set -euo pipefail
cd "$(dirname "$0")/.."
user=
if [ "$(id -u)" -ne 0 ]; then
    user="--user --map-root-user"
fi
exec unshare $user --pid --fork --mount-proc build/release/bin/window-figures "$@"
