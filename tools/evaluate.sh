#!/usr/bin/env bash
# Judges the measurement of the median beat against recordings that cardiologists have marked, and prints the errors per
# boundary: tools/evaluate.sh [--leads] [--records] [--shipped] [--degraded] [--nested] (bench/evaluation/delineation_report.cpp), each
# record by the networks that were trained without it. With --statements
# it holds the automatic interpretation against their diagnoses instead (bench/evaluation/statements_report.cpp).
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"

records="$(records_folder)"
[ -n "$records" ] || die "no marked recordings here: set KX_RECORDS to the folder that holds ludb"
report=delineation_report
if [ "${1:-}" = --statements ]; then
    report=statements_report
    shift
fi
mkdir -p build
say "building the report ..."
{ cmake --preset optimised && cmake --build --preset optimised --target "$report"; } >build/evaluate-build.log 2>&1 || {
    tail -n 40 build/evaluate-build.log
    die "building the report failed"
}
exec "build/optimised/bench/evaluation/$report" "$records/ludb" "$@"
