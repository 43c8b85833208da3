#!/usr/bin/env bash
# Trains the networks of kxanalyze again, from the recordings (KX_RECORDS): tools/train_delineator.sh. About an hour on one idle core.
# Writes the tables of the cross-validation (bench/evaluation/folds), the source files of the shipped tables
# (suite/kxanalyze/network_weights_*.cpp) and the beats of its test (tests/unit/analyze/network_beats.txt). Nothing of it is
# needed to build or to test; it needs Python with PyTorch, as the distribution packages them.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"

records="$(records_folder)"
[ -n "$records" ] || die "no marked recordings here: set KX_RECORDS to the folder that holds ludb"
/usr/bin/python3 -c 'import numpy, torch' 2>/dev/null || {
    say "installing PyTorch ..."
    as_root apt-get update -qq && as_root apt-get install -y -qq --no-install-recommends python3-torch python3-numpy >/dev/null
}
out=build/delineator
mkdir -p "$out/beats"
say "writing the beats ..."
{ cmake --preset optimised && cmake --build --preset optimised --target delineation_report; } >build/train-build.log 2>&1 ||
    die "building the report failed, see build/train-build.log"
build/optimised/bench/evaluation/delineation_report "$records/ludb" --training "$out/beats"
say "training; a network whose table is in $out is not trained again ..."
/usr/bin/python3 tools/delineator/train.py "$out/beats" "$out"
cp "$out"/fold?.weights "$out/records.txt" bench/evaluation/folds/
cp "$out"/network_weights_?.cpp suite/kxanalyze/
cp "$out/network_beats.txt" tests/unit/analyze/
