#!/usr/bin/env bash
# pictures.sh: takes the pictures that the README shows.
set -euo pipefail
cd "$(dirname "$0")/.."
album=$(mktemp -d)
trap 'rm -rf "$album"' EXIT
machine=tools/gallery/machines/linux-desktop
build/release/bin/pacelet-gallery "$album" --replay "$machine"
while read -r shot name; do
    [ -f "$album/$shot.png" ] || build/release/bin/pacelet-gallery "$album" --only "$shot"
    cp "$album/$shot.png" "docs/pictures/$name.png"
done <<'LIST'
overview-tabs overview
overview-hot overview-hot
processes-by-memory processes
processes-app process-detail
browser-tabs browser-tabs
internet-weak internet
usage-bottlenecks usage
background-items background-items
onboarding onboarding
settings settings
panel-struggling panel
overview-captured linux-overview
processes-captured linux-processes
backgroundItems-captured linux-background-items
usage-captured linux-usage
LIST

# The tabs of a real browser, where there is one.
if command -v chromium >/dev/null; then
    PACELET_PICTURE=$PWD/docs/pictures/browser-live.png scripts/test-browser.sh \
        --gtest_also_run_disabled_tests '--gtest_filter=*SitsForItsPicture' >/dev/null 2>&1
fi
