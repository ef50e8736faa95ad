#!/usr/bin/env bash
# lint.sh [--cheap]: layout, include walls, QML and clang-tidy over the whole tree; the cheap part
# leaves out the last two.
set -euo pipefail
cd "$(dirname "$0")/.."
failed=0

git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror || failed=1
python3 scripts/include-walls.py || failed=1

if [ "${1:-}" != --cheap ]; then
    cmake --build build/release --target pacelet_screens_qmllint || failed=1
    # What is compiled in one piece is read in one piece: headers once for a folder. What is made by the
    # build is left out.
    python3 - build/release/compile_commands.json <<'PY' | xargs -P "$(getconf _NPROCESSORS_ONLN)" -n 1 \
        clang-tidy -p build/release --quiet --warnings-as-errors='*' --extra-arg=-Wno-unknown-warning-option \
        --checks=-bugprone-suspicious-include 2>/dev/null || failed=1
import json, sys
for command in json.load(open(sys.argv[1])):
    file = command["file"]
    if not any(made in file for made in ("autogen", "qmlcache", ".rcc", "qmltyperegistrations", "_qml_cxx")):
        print(file)
PY
fi
exit $failed
