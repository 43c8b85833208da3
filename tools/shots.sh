#!/usr/bin/env bash
# Pictures of the workstation window and of every pane into build/shots/: of the built-in recording and, where the
# recordings are, of a real one. The built-in ones are also the README's pictures in docs/pictures/.
# tools/shots.sh [--no-docs]: leaves docs/pictures/ alone. Fails when a picture could not be made.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"

# One screen and one wineserver for all pictures.
[ -n "${DISPLAY:-}" ] || exec tools/with-display.sh "${BASH_SOURCE[0]}" "$@"

bash tools/build.sh win32
mkdir -p build/shots
panes=(window general qrs p t hypertrophy interpretation table)
missing=0

# shoot NAME RECORD...: every pane of one recording.
shoot() {
    local name="$1" pane
    shift
    for pane in "${panes[@]}"; do
        if tools/wine.sh build/win32/bin/kxhost.exe --shot "build/shots/$name-$pane.png" "$@" "$pane"; then
            say "build/shots/$name-$pane.png"
        else
            rm -f "build/shots/$name-$pane.png"
            missing=$((missing + 1))
        fi
    done
}

shoot builtin --builtin
records="$(sed -n 's/^KX_RECORDS:PATH=//p' build/win32/CMakeCache.txt)"
if [ -n "$records" ] && [ -e "$records/ptb/s0010_re.hea" ]; then
    shoot ptb "Z:$records/ptb/s0010_re.hea"
else
    say "no recordings here: no pictures of a real one"
fi

if [ "${1:-}" != --no-docs ]; then
    mkdir -p docs/pictures
    for pane in "${panes[@]}"; do
        [ ! -e "build/shots/builtin-$pane.png" ] || cp "build/shots/builtin-$pane.png" "docs/pictures/$pane.png"
    done
    say "the README's pictures: docs/pictures/"
fi
[ "$missing" -eq 0 ] || die "$missing pictures could not be made"
