#!/usr/bin/env bash
# The benchmarks through the test host (a whole real run, then the dialog's
# opening and a preview re-run under a virtual display), for every given
# Windows build this machine can execute.
#   scripts/bench-host.sh <win-build-dir>...
set -eu
root="$(cd "$(dirname "$0")/.." && pwd)"
for build in "$@"; do
    arch=$(cat "$build/wine-arch")
    if ! reason=$(bash "$root/scripts/can-run.sh" "$build"); then
        echo "bench-host: $arch not run: $reason"
        continue
    fi
    echo "bench-host: $arch"
    "$root/scripts/with-display.sh" "$build" bash -c \
        'cd "$1" && wine bench/host/host_run_bench.exe &&
         wine bench/host/dialog_benchmark.exe --gtest_brief=1' bench "$build"
done
