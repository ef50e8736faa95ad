#!/usr/bin/env bash
# fuzz.sh RUNS SECONDS: runs every fuzzer from its corpus, until one of the limits. New inputs go to
# the build folder, so that the corpus in the tree stays as it is.
set -euo pipefail
cd "$(dirname "$0")/.."
for fuzzer in build/fuzz/bin/*-fuzzer; do
    name=$(basename "$fuzzer" -fuzzer)
    grown=build/fuzz/corpus/$name
    options=()
    [ -f "fuzz/dictionaries/$name.dict" ] && options+=("-dict=fuzz/dictionaries/$name.dict")
    mkdir -p "$grown"
    log=build/fuzz/$name.log
    if "$fuzzer" -runs="$1" -max_total_time="$2" -timeout=10 -artifact_prefix=build/fuzz/ \
        "${options[@]}" "$grown" "fuzz/corpus/$name" >"$log" 2>&1; then
        echo "fuzz $name: $(sed -n 's/^Done \([0-9]*\) runs.*/\1 runs, no fault/p' "$log")"
    else
        cat "$log"
        exit 1
    fi
done
