#!/usr/bin/env bash
# Builds both presets, runs their tests and closes with one line "N passed, N failed" over the GoogleTest cases of both; a
# test that is no GoogleTest program counts as one case, and so does a program that dies before its results are written. The
# native tests run while the Windows programs are built. Arguments go to ctest: tools/test.sh -R unit_test
set -u
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT" || exit 1

# Windows programs get two screens of their own, each with a Wine of its own (tools/wine.sh), so that two run at a time and
# neither takes the focus from the other. Nobody's desktop is disturbed, nor disturbs.
if [ -z "${KX_SCREENS:-}" ]; then
    unset DISPLAY
    exec tools/with-display.sh bash -c 'first=$DISPLAY; unset DISPLAY
        exec tools/with-display.sh bash -c "KX_SCREENS=\"$first \$DISPLAY\" exec bash tools/test.sh \"\$@\"" _ "$@"' _ "$@"
fi

run_preset() {
    local preset="$1"
    shift
    rm -rf "build/$preset/results"
    mkdir -p "build/$preset/results"
    ctest --preset "$preset" --no-tests=error --parallel 2 "$@" >"build/$preset-test.log" 2>&1
    echo "$?" >"build/$preset/results/status"
}

passed=0
failed=0
# Adds what a preset's run has come to.
count() {
    local preset="$1" status tests=0 bad=0 xml t f e plain
    status="$(cat "build/$preset/results/status" 2>/dev/null || echo 1)"
    for xml in "build/$preset/results"/*.xml; do
        [ -e "$xml" ] || continue
        read -r t f e <<<"$(sed -n 's/.*<testsuites tests="\([0-9]*\)" failures="\([0-9]*\)".* errors="\([0-9]*\)".*/\1 \2 \3/p' "$xml" | head -n 1)"
        tests=$((tests + ${t:-0}))
        bad=$((bad + ${f:-0} + ${e:-0}))
    done
    # What speaks through ctest alone: a script, or a program that crashed or hung.
    plain="$(grep -cE '^ *[0-9]+/[0-9]+ Test .* package .*Passed' "build/$preset-test.log")"
    if [ "$status" -ne 0 ] && [ "$bad" -eq 0 ]; then
        bad="$(grep -cE '^\s+[0-9]+ - .*\((Failed|Timeout|SEGFAULT|Not Run|Subprocess aborted|Exit code|SIG)' "build/$preset-test.log")"
        [ "$bad" -gt 0 ] || bad=1
        tests=$((tests + bad))
    fi
    passed=$((passed + tests - bad + plain))
    failed=$((failed + bad))
}

bash tools/build.sh native || exit 1
say "testing native ..."
run_preset native "$@" &
native=$!
bash tools/build.sh win32 || { wait "$native"; exit 1; }
say "testing win32 ..."
run_preset win32 "$@"
wait "$native"
cat build/native-test.log build/win32-test.log
count native
count win32
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
