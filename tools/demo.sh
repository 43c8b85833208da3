#!/usr/bin/env bash
# Opens the workstation: tools/demo.sh [FILE], the built-in recording when none is named.
# Where there is no screen that can be used, writes pictures into build/shots/ instead.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"

# A DISPLAY may be set and still lead nowhere. The X clients at hand are asked, else the local socket.
display_usable() {
    [ -n "${DISPLAY:-}" ] || return 1
    local client
    for client in xdpyinfo "xset q" "xprop -root"; do
        # shellcheck disable=SC2086
        if command -v ${client%% *} >/dev/null 2>&1; then
            timeout 10 $client >/dev/null 2>&1
            return
        fi
    done
    case "$DISPLAY" in
    :*)
        local number="${DISPLAY#:}"
        [ -S "/tmp/.X11-unix/X${number%%.*}" ]
        ;;
    *) return 0 ;;
    esac
}

if display_usable; then
    bash tools/build.sh win32:workstation
    record=(--builtin)
    [ $# -eq 0 ] || record=("Z:$(realpath "$1")")
    say "opening the workstation ..."
    exec tools/wine.sh build/win32/bin/kxhost.exe "${record[@]}"
fi
say "no display that can be used (DISPLAY=${DISPLAY:-}): writing pictures to build/shots/ instead"
unset DISPLAY
exec bash tools/shots.sh --panes
