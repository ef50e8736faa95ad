#!/usr/bin/env bash
# fuzz-long.sh HOURS: shares the hours among all fuzzers, one a processor at a time, and then keeps of
# each corpus the fewest inputs that reach as much, in build/fuzz/corpus. Prints executions and inputs.
set -euo pipefail
cd "$(dirname "$0")/.."

# one NAME SECONDS
one() {
    local name=$1 fuzzer=build/fuzz/bin/$1-fuzzer grown=build/fuzz/corpus/$1 least=build/fuzz/least/$1
    local log=build/fuzz/$1.log options=()
    [ -f "fuzz/dictionaries/$name.dict" ] && options+=("-dict=fuzz/dictionaries/$name.dict")
    mkdir -p "$grown"
    rm -rf "$least" && mkdir -p "$least"
    if ! "$fuzzer" -max_total_time="$2" -timeout=10 -artifact_prefix=build/fuzz/ -print_final_stats=1 \
        "${options[@]}" "$grown" "fuzz/corpus/$name" >"$log" 2>&1; then
        tail -60 "$log"
        return 1
    fi
    "$fuzzer" -merge=1 "$least" "$grown" "fuzz/corpus/$name" >>"$log" 2>&1
    rm -rf "$grown" && mv "$least" "$grown"
    printf '%-20s %12s executions %5s inputs\n' "$name" \
        "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | head -1)" "$(ls "$grown" | wc -l)"
}
export -f one

fuzzers=(build/fuzz/bin/*-fuzzer)
seconds=$(awk -v hours="$1" -v cores="$(nproc)" -v fuzzers=${#fuzzers[@]} \
    'BEGIN { printf "%d", hours * 3600 * cores / fuzzers + 1 }')
printf '%s\n' "${fuzzers[@]}" | sed 's|.*/||; s|-fuzzer$||' |
    xargs -P "$(nproc)" -I{} bash -c "one {} $seconds"
