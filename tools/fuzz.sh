#!/usr/bin/env bash
# Runs every fuzz target with libFuzzer for a number of seconds each: tools/fuzz.sh [SECONDS] [TARGET ...]
# New inputs are kept in build/fuzz/corpus; the committed corpus is only read. The first finding stops the run and is kept there.
set -u
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT" || exit 1
command -v clang++ >/dev/null 2>&1 || die "clang is not installed (package clang)"

seconds="${1:-60}"
[ $# -gt 0 ] && shift
mkdir -p build
say "building the fuzz targets ..."
{ cmake --preset fuzz && cmake --build --preset fuzz --target fuzz_targets; } >build/fuzz-build.log 2>&1 || {
    tail -n 40 build/fuzz-build.log
    die "building the fuzz targets failed"
}
for program in build/fuzz/tests/fuzz/*_fuzz; do
    name="$(basename "$program")"
    [ $# -eq 0 ] || [[ " $* " == *" $name "* ]] || continue
    corpus="build/fuzz/corpus/${name%_fuzz}"
    mkdir -p "$corpus"
    committed=()
    [ -d "tests/fuzz/corpus/${name%_fuzz}" ] && committed=("tests/fuzz/corpus/${name%_fuzz}")
    say "$name for $seconds s ..."
    ASAN_OPTIONS=allocator_may_return_null=1 "$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -artifact_prefix="$corpus-finding-" "$corpus" "${committed[@]}" 2>&1 | grep -E 'DONE|ERROR|SUMMARY|Test unit|stat::'
    [ "${PIPESTATUS[0]}" -eq 0 ] || die "$name found something: see $corpus-finding-*"
done
say "no finding"
