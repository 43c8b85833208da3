#!/usr/bin/env bash
# Runs a Windows program under the Wine that set-up chose: tools/wine.sh PROGRAM.exe [ARGUMENT ...]
# The Wine prefix belongs to the checkout (build/wine-prefix). Needs a DISPLAY; starts a screen of its own when there is none.
set -u
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

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
