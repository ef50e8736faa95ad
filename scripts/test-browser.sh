#!/usr/bin/env bash
# test-browser.sh: tries the tab cleaner on a real browser, apart from the browsers that run on this
# machine where that is allowed: their tabs are none of its business.
set -euo pipefail
cd "$(dirname "$0")/.."
apart=()
for way in "--pid" "--map-current-user --pid"; do
    # shellcheck disable=SC2086
    if unshare $way --fork --mount-proc true 2>/dev/null; then
        # The shell takes leave of what its children left behind.
        # shellcheck disable=SC2206
        apart=(unshare $way --fork --kill-child --mount-proc bash -c '"$@"; exit $?' -)
        break
    fi
done
"${apart[@]}" build/release/bin/real-browser-tests "$@"
