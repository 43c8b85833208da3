#!/usr/bin/env bash
# Runs a Windows program under the Wine that set-up chose: tools/wine.sh PROGRAM.exe [ARGUMENT ...]
# The Wine prefix belongs to the checkout (build/wine-prefix). Needs a DISPLAY; starts a screen of its own when there is none.
# Where screens are offered to choose from (KX_SCREENS, displays), the first that no other program uses is taken, with a
# prefix of its own.
set -u
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

if [ -n "${KX_SCREENS:-}" ]; then
    mkdir -p "$KX_ROOT/build"
    number=0
    taken=""
    for screen in $KX_SCREENS; do
        number=$((number + 1))
        exec 7>"$KX_ROOT/build/screen-$number.lock"
        if flock --nonblock 7; then
            taken=yes
            break
        fi
    done
    # None is free: the last one will be.
    [ -n "$taken" ] || flock 7
    # The lock is this script's alone: what a program leaves running must not keep it.
    unset KX_SCREENS
    DISPLAY="$screen" KX_WINEPREFIX="$KX_ROOT/build/wine-prefix-$number" "${BASH_SOURCE[0]}" "$@" 7>&-
    exit
fi
if [ -z "${DISPLAY:-}" ]; then
    exec "$KX_ROOT/tools/with-display.sh" "${BASH_SOURCE[0]}" "$@"
fi

export WINEPREFIX="${KX_WINEPREFIX:-$KX_ROOT/build/wine-prefix}"
export WINEARCH=win32 WINEDEBUG="${WINEDEBUG:--all}" WINEDLLOVERRIDES="mscoree=;mshtml="
mkdir -p "$(dirname "$WINEPREFIX")"

root="$(wine_root)"
if [ -z "$root" ]; then
    run=(wine)
else
    # The root's own system folders, and everything of this machine that is none of them.
    run=(bwrap --ro-bind "$root/usr" /usr --ro-bind "$root/etc" /etc --ro-bind "$root/var" /var
        --symlink usr/bin /bin --symlink usr/sbin /sbin --symlink usr/lib /lib
        --dev-bind /dev /dev --proc /proc --bind /tmp /tmp --die-with-parent)
    for dir in /*; do
        [ -L "$dir" ] && continue
        case "$dir" in
        /bin | /boot | /dev | /etc | /lib* | /lost+found | /proc | /sbin | /sys | /tmp | /usr | /var | /run) ;;
        *) [ -d "$dir" ] && [ -r "$dir" ] && run+=(--bind "$dir" "$dir") ;;
        esac
    done
    # A desktop's key to its screen often lies under /run, which is not shown as a whole.
    if [ -n "${XAUTHORITY:-}" ] && [ -r "$XAUTHORITY" ]; then run+=(--ro-bind "$XAUTHORITY" "$XAUTHORITY"); fi
    run+=(--chdir "$PWD" wine)
fi

# A prefix is made once; a lock keeps two first runs from making it at the same time.
if [ ! -e "$WINEPREFIX/.kx-ready" ]; then
    (
        flock 9
        if [ ! -e "$WINEPREFIX/.kx-ready" ]; then
            "${run[@]}" wineboot -i >/dev/null 2>&1
            touch "$WINEPREFIX/.kx-ready"
        fi
    ) 9>"$WINEPREFIX.lock"
fi
exec "${run[@]}" "$@"
