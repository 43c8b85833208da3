#!/usr/bin/env bash
# Configures and builds presets: tools/build.sh [PRESET ...]; both native and win32 when none is named.
# The compilers' output is kept in build/PRESET-*.log and shown when something fails.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"
mkdir -p build

build_preset() {
    say "building $1 ..."
    cmake --preset "$1" >"build/$1-configure.log" 2>&1 || { cat "build/$1-configure.log"; die "configuring $1 failed"; }
    cmake --build --preset "$1" >"build/$1-build.log" 2>&1 || { tail -n 60 "build/$1-build.log"; die "building $1 failed"; }
}

[ $# -gt 0 ] || set -- native win32
for preset in "$@"; do build_preset "$preset"; done
