#!/usr/bin/env bash
# The real-run benchmark through the test host, for every given Windows build
# this machine can execute.
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
    (
        . "$root/scripts/wine-env.sh" "$build"
        "$root/scripts/wine-prefix.sh" "$build"
        cd "$build" && wine bench/host/host_run_bench.exe
    )
done
