#!/usr/bin/env bash
# Configures and builds presets: tools/build.sh [PRESET[:TARGET] ...]; both native and win32 whole when none is named.
# The compilers' output is kept in build/PRESET-*.log and shown when something fails.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"
mkdir -p build

build_preset() {
    local preset="${1%%:*}" target=()
    [ "$preset" = "$1" ] || target=(--target "${1#*:}")
    say "building $1 ..."
    cmake --preset "$preset" >"build/$preset-configure.log" 2>&1 ||
        { cat "build/$preset-configure.log"; die "configuring $preset failed"; }
    cmake --build --preset "$preset" "${target[@]}" >"build/$preset-build.log" 2>&1 ||
        { tail -n 60 "build/$preset-build.log"; die "building $1 failed"; }
}

[ $# -gt 0 ] || set -- native win32
for preset in "$@"; do build_preset "$preset"; done
