#!/usr/bin/env bash
# Runs the benchmarks, natively and as Windows programs, and prints each as a ratio to a floor that was measured in the same
# run: tools/bench.sh [--runs N] [NAME ...], e.g. update_detection_bench. With several runs each line has the medians, the range
# of the ratio and by how much it leaves its median at the most. A ratio over its target is marked "over" and fails nothing: it
# is for a person to judge. What fails the run is a program that cannot be built or does not run to its end.
set -u -o pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT" || exit 1

# One screen and one wineserver for all programs.
if [ -z "${DISPLAY:-}" ]; then exec tools/with-display.sh bash "${BASH_SOURCE[0]}" "$@"; fi

runs=1
if [ "${1:-}" = --runs ]; then
    runs="${2:?how many runs}"
    shift 2
fi
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

# run_once PRESET LINES: every wanted program of the preset; its lines, behind the run's number, go to the file LINES.
run_once() {
    local preset="$1" program name run arguments lines
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
        printf '%s\n' "$lines" >>"$2"
    done
}

# Medians over the runs, in the order in which the lines came first.
summary() {
    awk -v runs="$runs" '
        function median(values, count,    i, k, swap) {
            for (i = 2; i <= count; ++i) for (k = i; k > 1 && values[k] < values[k - 1]; --k) {
                swap = values[k]; values[k] = values[k - 1]; values[k - 1] = swap
            }
            return count % 2 ? values[(count + 1) / 2] : (values[count / 2] + values[count / 2 + 1]) / 2
        }
        NF >= 5 {
            if (!($1 in count)) order[++lines] = $1
            n = ++count[$1]
            floors[$1, n] = $2; subjects[$1, n] = $3; ratios[$1, n] = $4; target[$1] = $5
        }
        END {
            for (line = 1; line <= lines; ++line) {
                name = order[line]; n = count[name]
                for (i = 1; i <= n; ++i) { f[i] = floors[name, i]; s[i] = subjects[name, i]; r[i] = ratios[name, i] + 0 }
                middle = median(r, n)
                range = ""
                if (runs > 1) {
                    off = r[n] - middle > middle - r[1] ? r[n] - middle : middle - r[1]
                    range = sprintf("%.2f-%.2f %3.0f %%", r[1], r[n], middle > 0 ? 100 * off / middle : 0)
                }
                mark = middle > target[name] + 0 ? "over" : ""
                # What is counted has no nanoseconds.
                counted = floors[name, 1] == "-"
                printf "%-36s %14s %14s %9.2f %9s   %-20s %s\n", name, counted ? "-" : sprintf("%.0f", median(f, n)),
                    counted ? "-" : sprintf("%.0f", median(s, n)), middle, target[name], range, mark
            }
        }' "$1"
}

failed=0
over=0
ran=0
for preset in optimised win32; do
    say "building the benchmarks ($preset) ..."
    rm -rf "build/$preset/bench-bin"
    build "$preset" benchmarks
    : >build/bench-lines
    for ((i = 0; i < runs; ++i)); do run_once "$preset" build/bench-lines; done
    printf '%-36s %14s %14s %9s %9s   (%s, %s)\n' "" "floor ns" "measured ns" "ratio" "target" "$preset" "median of $runs"
    summary build/bench-lines | tee build/bench-summary
    over=$((over + $(grep -c 'over$' build/bench-summary)))
done
[ "$ran" -gt 0 ] || die "no such benchmark: $*"
say "$over over their target, $failed that do not run"
[ "$failed" -eq 0 ]
