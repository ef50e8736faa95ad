#!/usr/bin/env bash
# fuzz-coverage.sh: how many lines of the parsers in fuzz/parsers.txt the corpora reach, those in the
# tree and those that grew in build/fuzz/corpus.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v llvm-cov >/dev/null || scripts/install.sh scripts/packages-fuzz-coverage.txt
out=build/fuzz-coverage/profiles
rm -rf "$out" && mkdir -p "$out"
objects=()
for fuzzer in build/fuzz-coverage/bin/*-fuzzer; do
    name=$(basename "$fuzzer" -fuzzer)
    grown=build/fuzz/corpus/$name
    mkdir -p "$grown"
    LLVM_PROFILE_FILE=$out/$name.profraw "$fuzzer" -runs=0 "fuzz/corpus/$name" "$grown" >"$out/$name.log" 2>&1 ||
        { cat "$out/$name.log"; exit 1; }
    objects+=(${objects:+-object} "$fuzzer")
done
llvm-profdata merge -sparse "$out"/*.profraw -o "$out/all.profdata"
mapfile -t parsers < <(grep -v '^#' fuzz/parsers.txt)
llvm-cov export -summary-only -instr-profile="$out/all.profdata" "${objects[@]}" "${parsers[@]}" |
    python3 -c '
import json, os, sys
files = json.load(sys.stdin)["data"][0]["files"]
covered = total = 0
for file in sorted(files, key=lambda file: file["summary"]["lines"]["percent"]):
    lines = file["summary"]["lines"]
    covered += lines["covered"]
    total += lines["count"]
    print("%5.1f%% of %4d lines  %s" % (lines["percent"], lines["count"], os.path.relpath(file["filename"])))
print("%5.1f%% of %4d lines  all" % (100 * covered / total, total))'
