#!/usr/bin/env bash
# Fuzzes each target for SECONDS, niced. The corpus grows in the build folder
# beside the repository's seed corpus; a finding is written there as a crash-*
# file: once fixed, copy it into tests/fuzz/corpus/<target>/ as a test case.
# Usage: run.sh BUILD_DIR [SECONDS]
set -u
cd "$(dirname "$0")/../.."
build=${1:?build folder} seconds=${2:-300} total=0 rc=0
for target in pipeline host_area; do
    log="$build/fuzz-$target.log" && mkdir -p "$build/corpus-$target"
    nice "$build/fuzz_$target" -max_total_time="$seconds" -print_final_stats=1 \
        -artifact_prefix="$build/" "$build/corpus-$target" "tests/fuzz/corpus/$target" >"$log" 2>&1 ||
        { rc=1; echo "fuzz_$target found a fault:"; tail -n 40 "$log"; }
    runs=$(grep -o 'stat::number_of_executed_units: [0-9]*' "$log" | awk '{print $2}')
    echo "fuzz_$target: ${runs:-0} executions in $seconds s" && total=$((total + ${runs:-0}))
done
echo "fuzz: $total executions in all"
exit $rc
