#!/usr/bin/env bash
# Runs the tests of both presets and closes with one line "N passed, N failed" over the GoogleTest cases of both.
# A test program that dies before it has written its results counts as one failure.
set -u
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT" || exit 1

passed=0
failed=0
for preset in native win32; do
    say "testing $preset ..."
    results="build/$preset/results"
    rm -rf "$results"
    mkdir -p "$results"
    ctest --preset "$preset" --no-tests=error "$@" 2>&1 | tee "build/$preset-test.log"
    status=${PIPESTATUS[0]}
    tests=0
    bad=0
    for xml in "$results"/*.xml; do
        [ -e "$xml" ] || continue
        read -r t f e <<<"$(sed -n 's/.*<testsuites tests="\([0-9]*\)" failures="\([0-9]*\)".* errors="\([0-9]*\)".*/\1 \2 \3/p' "$xml" | head -n 1)"
        tests=$((tests + ${t:-0}))
        bad=$((bad + ${f:-0} + ${e:-0}))
    done
    passed=$((passed + tests - bad))
    # A program that crashed, hung or is no GoogleTest program speaks through ctest alone.
    if [ "$status" -ne 0 ] && [ "$bad" -eq 0 ]; then
        bad="$(grep -cE '^\s+[0-9]+ - .*\((Failed|Timeout|SEGFAULT|Not Run|Subprocess aborted|Exit code|SIG)' "build/$preset-test.log")"
        [ "$bad" -gt 0 ] || bad=1
    fi
    failed=$((failed + bad))
done
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
