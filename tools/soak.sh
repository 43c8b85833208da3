#!/usr/bin/env bash
# A random host uses the library: tools/soak.sh [--minutes N] [--seed S]; five minutes from a seed that is printed, when nothing
# else is said. Each seed is a program of its own; the first one that fails is told with its last steps, and the same seed fails
# again. What the host does is told in tests/soak/random_host.h.
set -u
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT" || exit 1

minutes=5
seed=$((RANDOM + 1))
while [ $# -gt 0 ]; do
    case "$1" in
    --minutes) minutes="${2:?}" ;;
    --seed) seed="${2:?}" ;;
    *) die "tools/soak.sh [--minutes N] [--seed S]" ;;
    esac
    shift 2
done
if [ -z "${DISPLAY:-}" ]; then exec tools/with-display.sh bash tools/soak.sh --minutes "$minutes" --seed "$seed"; fi

bash tools/build.sh win32:soak
log=build/soak.log
: >"$log"
say "from seed $seed for $minutes minutes ..."
end=$((SECONDS + minutes * 60))
failed=0
seeds=0
while [ "$SECONDS" -lt "$end" ]; do
    status=0
    (cd build/win32 && KX_SOAK_SEED="$seed" timeout 300 ../../tools/wine.sh test-bin/soak/soak.exe --gtest_brief=1) \
        >build/soak-last.log 2>&1 || status=$?
    tr -d '\r' <build/soak-last.log | grep '^counts:' >>"$log"
    seeds=$((seeds + 1))
    if [ "$status" -ne 0 ]; then
        tail -n 25 build/soak-last.log
        say "seed $seed failed ($status)"
        failed=1
        break
    fi
    seed=$((seed + 1))
done
awk '{ for (i = 2; i <= NF; ++i) sum[i] += $i }
     END { printf "%d episodes, %d steps, %d panes, %d modal dialogs, %d ends inside notices and calls, %d statements found in their records\n",
                  sum[2], sum[3], sum[4], sum[5], sum[6], sum[7] }' "$log"
say "$seeds seeds, $failed failed"
exit "$failed"
