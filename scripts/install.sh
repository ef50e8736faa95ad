#!/usr/bin/env bash
# install.sh LIST: installs those packages of a list that are missing.
set -euo pipefail
cd "$(dirname "$0")/.."

wanted=$(grep -v '^#' "$1")

# missing_of INSTALLED: what is wanted, by its lines on standard input, and is not among the installed.
missing_of() {
    comm -23 <(sort -u) <(sort -u <<<"$1")
}

# tell PACKAGE...: nothing for none.
tell() {
    if [ -n "$*" ]; then
        echo "Installing: $*"
    fi
}

# On a Mac a line may begin with where its package comes from.
install_on_mac() {
    if ! command -v brew >/dev/null; then
        echo "install.sh: packages come from Homebrew, which is not here (https://brew.sh)" >&2
        return 1
    fi
    local formulas casks modules module folder=build/mac-packages
    formulas=$(grep -v ' ' <<<"$wanted" | missing_of "$(brew list --formula -1)")
    casks=$(sed -n 's/^cask //p' <<<"$wanted" | missing_of "$(brew list --cask -1)")
    # shellcheck disable=SC2086 # one package a word
    tell $formulas $casks
    if [ -n "$formulas" ]; then
        # shellcheck disable=SC2086
        brew install --quiet --formula $formulas
    fi
    if [ -n "$casks" ]; then
        # shellcheck disable=SC2086
        brew install --quiet --cask $casks
    fi
    modules=$(sed -n 's/^npm //p' <<<"$wanted")
    for module in $modules; do
        if [ ! -d "$folder/node_modules/${module%@*}" ]; then
            tell "$module"
            npm install --prefix "$folder" --no-save --no-audit --no-fund --loglevel error "$module" >/dev/null
        fi
    done
}

install_on_debian() {
    local missing sudo=
    # dpkg-query names on standard error what it does not know at all; those are missing, too.
    # shellcheck disable=SC2086
    missing=$(missing_of "$(dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' $wanted 2>/dev/null |
        sed -n 's/^ii *//p')" <<<"$wanted")
    if [ -z "$missing" ]; then
        return
    fi
    # shellcheck disable=SC2086
    tell $missing
    if [ "$(id -u)" -ne 0 ]; then
        sudo=sudo
    fi
    $sudo apt-get update -qq
    # shellcheck disable=SC2086
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

if [ "$(uname)" = Darwin ]; then
    install_on_mac
else
    install_on_debian
fi
