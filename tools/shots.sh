#!/usr/bin/env bash
# Pictures of the workstation window and of every pane into build/shots/: of the built-in recording and, where the
# recordings are, of a real one. The built-in ones are also the README's pictures in docs/pictures/.
# tools/shots.sh [--panes]: the panes of the built-in recording alone, and docs/pictures/ is left as it is. Fails when a picture
# could not be made.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"

# One screen and one wineserver for all pictures.
[ -n "${DISPLAY:-}" ] || exec tools/with-display.sh "${BASH_SOURCE[0]}" "$@"

panes_alone=""
[ "${1:-}" != --panes ] || panes_alone=yes
if [ -n "$panes_alone" ]; then
    bash tools/build.sh win32:workstation
else
    bash tools/build.sh win32
fi
mkdir -p build/shots
panes=(window worklist tracing general qrs p t hypertrophy interpretation table report)
missing=0

# shoot NAME RECORD...: every pane of one recording.
shoot() {
    local name="$1" pane size
    shift
    for pane in "${panes[@]}"; do
        # As wide as it takes to see every marker.
        size=()
        case "$pane" in qrs | p | t) size=(--size 1480x560) ;; general) size=(--size 1000x560) ;; esac
        # The worklist is pictured with an archive of its own, not that of whoever makes the pictures.
        if tools/wine.sh build/win32/bin/kxhost.exe --archive 'build\shots\archive.kxdb' --shot "build/shots/$name-$pane.png" "$@" "$pane" "${size[@]}"; then
            say "build/shots/$name-$pane.png"
        else
            rm -f "build/shots/$name-$pane.png"
            missing=$((missing + 1))
        fi
    done
}

shoot builtin --builtin
records="$(records_folder)"
if [ -n "$panes_alone" ]; then
    :
elif [ -n "$records" ] && [ -e "$records/ptb/s0010_re.hea" ]; then
    shoot ptb "Z:$(realpath "$records")/ptb/s0010_re.hea"
else
    say "no recordings here: no pictures of a real one"
fi

if [ -z "$panes_alone" ]; then
    # The two modal dialogs are pictured by their tests while they are driven; these write into build/shots/ themselves.
    for modal in "dictionary_test *ShowsTheSections*" "dictionary_test *CompletesStatements"; do
        program="${modal%% *}"
        (cd build/win32 && ../../tools/wine.sh "test-bin/$program/$program.exe" --gtest_brief=1 "--gtest_filter=${modal#* }") ||
            missing=$((missing + 1))
    done

    mkdir -p docs/pictures
    for pane in "${panes[@]}"; do
        [ "$pane" != worklist ] || continue  # the walkthrough's has tests in it
        [ ! -e "build/shots/builtin-$pane.png" ] || cp "build/shots/builtin-$pane.png" "docs/pictures/$pane.png"
    done
    for modal in dictionary editor; do
        [ ! -e "build/shots/$modal.png" ] || cp "build/shots/$modal.png" "docs/pictures/$modal.png"
    done
    say "the README's pictures: docs/pictures/"
fi
[ "$missing" -eq 0 ] || die "$missing pictures could not be made"
