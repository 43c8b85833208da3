#!/usr/bin/env bash
# Runs the benchmarks, natively and as Windows programs, and prints each as a ratio to a floor that was measured in the same
# run: tools/bench.sh [NAME ...], e.g. update_detection_bench. A ratio over its target is marked "over" and fails nothing:
# it is for a person to judge. What fails the run is a program that cannot be built or does not run to its end.
set -u -o pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT" || exit 1

# One screen and one wineserver for all programs.
if [ -z "${DISPLAY:-}" ]; then exec tools/with-display.sh "${BASH_SOURCE[0]}" "$@"; fi

mkdir -p build
names="$*"
wanted() { [ -z "$names" ] || [[ " $names " == *" $1 "* ]]; }

# build PRESET TARGET...
build() {
    local preset="$1"
    shift
    { cmake --preset "$preset" && cmake --build --preset "$preset" --target "$@"; } >build/bench-build.log 2>&1 || {
        tail -n 40 build/bench-build.log
        die "building $* ($preset) failed"
    }
}

# The page whose compression is measured is the workstation's own.
page=build/bench-page.bmp
if wanted packbits_bench; then
    rm -f "$page"
    say "printing a page ..."
    build win32 kxhost kxanalyze kxsys
    tools/wine.sh build/win32/bin/kxhost.exe --print "${page//\//\\}" --builtin V5 >/dev/null
    [ -s "$page" ] || die "the workstation has not saved its page"
fi

failed=0
over=0
ran=0
for preset in optimised win32; do
    say "building the benchmarks ($preset) ..."
    rm -rf "build/$preset/bench-bin"
    build "$preset" benchmarks
    printf '%-36s %14s %14s %9s %9s   (%s)\n' "" "floor ns" "measured ns" "ratio" "target" "$preset"
    for program in "build/$preset/bench-bin"/*; do
        name="$(basename "${program%.exe}")"
        [ -x "$program" ] || continue
        wanted "$name" || continue
        ran=$((ran + 1))
        run=()
        [ "$preset" = win32 ] && run=(tools/wine.sh)
        arguments=()
        [ "$name" = packbits_bench ] && arguments=("$page")
        if ! lines="$(timeout 300 "${run[@]}" "$program" "${arguments[@]}" | tr -d '\r')"; then
            printf '%-36s does not run\n' "$name"
            failed=$((failed + 1))
            continue
        fi
        printf '%s\n' "$lines" | awk '{ printf "%-36s %14s %14s %9s %9s   %s\n", $1, $2, $3, $4, $5, ($4 + 0 > $5 + 0) ? "over" : "" }'
        over=$((over + $(printf '%s\n' "$lines" | awk '$4 + 0 > $5 + 0 { n++ } END { print n + 0 }')))
    done
done
[ "$ran" -gt 0 ] || die "no such benchmark: $*"
say "$over over their target, $failed that do not run"
[ "$failed" -eq 0 ]
