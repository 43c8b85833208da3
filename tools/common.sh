# Shared by kx and the scripts beside it: where things are kept, and how progress and failure are said.
# shellcheck shell=bash

KX_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# Large things that outlive a checkout (the private Wine root) are kept here.
KX_CACHE="${KX_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/kxdialogs}"
# Unpacked source packages of the distribution, a folder each by the package's name (also in cmake/KxTargets.cmake).
KX_SOURCES="$KX_CACHE/sources"
# Which Wine was chosen: "system" or "root:FOLDER".
KX_WINE_CHOICE="$KX_CACHE/wine-choice"

say() { printf 'kx: %s\n' "$*"; }
die() {
    printf 'kx: error: %s\n' "$*" >&2
    exit 1
}

# Runs a command as root, directly or through sudo.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null 2>&1; then
        sudo "$@"
    else
        die "root is needed for: $* (no sudo here)"
    fi
}

# The folder of the private Wine root; empty when the system's Wine serves.
wine_root() {
    local choice=""
    [ -r "$KX_WINE_CHOICE" ] && choice="$(cat "$KX_WINE_CHOICE")"
    case "$choice" in root:*) printf '%s' "${choice#root:}" ;; esac
}

# The folder of real recordings, which are no part of the repository: KX_RECORDS, else a folder "records" in the checkout
# or in one of its neighbours (as in cmake/KxTargets.cmake); empty when there is none.
records_folder() {
    local folder
    for folder in "${KX_RECORDS:-}" "$KX_ROOT/records" "$KX_ROOT/../records" "$KX_ROOT"/../*/records; do
        if [ -n "$folder" ] && [ -d "$folder/ludb" ]; then
            printf '%s' "$folder"
            return
        fi
    done
}
