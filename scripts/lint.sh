#!/usr/bin/env bash
# lint.sh [--cheap]: layout, include walls, QML and clang-tidy over the whole tree; the cheap part
# leaves out the last two.
set -euo pipefail
cd "$(dirname "$0")/.."
failed=0

git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror || failed=1
python3 scripts/include-walls.py || failed=1

if [ "${1:-}" != --cheap ]; then
    ninja -C build/release --quiet pacelet_screens_qmllint || failed=1
    # What is compiled in one piece is read in one piece: headers once for a folder. What is made by the
    # build is left out, and so are GCC's precompiled headers, which clang cannot read.
    mkdir -p build/lint
    python3 - <<'PY' | xargs -P "$(getconf _NPROCESSORS_ONLN)" -n 1 \
        clang-tidy -p build/lint --quiet --warnings-as-errors='*' --extra-arg=-Wno-unknown-warning-option \
        --checks=-bugprone-suspicious-include 2>/dev/null || failed=1
import json, re
made = ("autogen", "qmlcache", ".rcc", "qmltyperegistrations", "_qml_cxx", "cmake_pch")
commands = [command for command in json.load(open("build/release/compile_commands.json"))
            if not any(word in command["file"] for word in made)]
for command in commands:
    command["command"] = re.sub(r" -Winvalid-pch -include \S+cmake_pch\.hxx", "", command["command"])
with open("build/lint/compile_commands.json", "w") as file:
    json.dump(commands, file)
print(*(command["file"] for command in commands), sep="\n")
PY
fi
exit $failed
