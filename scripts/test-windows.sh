#!/usr/bin/env bash
# Runs the Windows suite of every given build that this machine can execute,
# each in its own Wine prefix under Xvfb. A 32-bit build on a machine that
# runs 64-bit programs only is compiled (with all its compile-time checks)
# but cannot run; that is said in one plain line. Any suite that failed, or
# that of a 64-bit build which could not run, fails the whole command.
#   scripts/test-windows.sh <win-build-dir>...
set -u
root="$(cd "$(dirname "$0")/.." && pwd)"
status=0
summary=()
for build in "$@"; do
    arch=$(cat "$build/wine-arch")
    if ! reason=$(bash "$root/scripts/can-run.sh" "$build"); then
        summary+=("$arch: the ${arch#win}-bit module was built but not run on this machine: $reason")
        [ "$arch" = win32 ] || status=1
        continue
    fi
    log=$(mktemp)
    bash "$root/scripts/with-display.sh" "$build" \
        bash -c 'cd "$0" && ctest --output-on-failure --timeout 120' "$build" | tee "$log"
    rc=${PIPESTATUS[0]}
    # ctest's closing count: "100% tests passed, 0 tests failed out of 229".
    counts=$(sed -n 's/.*tests passed, \([0-9]*\) tests\? failed out of \([0-9]*\).*/\1 \2/p' "$log")
    rm -f "$log"
    read -r failed total <<<"${counts:-0 0}"
    if [ "$rc" != 0 ] || [ "$total" = 0 ]; then status=1; fi
    if [ "$total" = 0 ]; then
        summary+=("$arch: the Windows suite ran no test (ctest exit $rc)")
    else
        summary+=("$arch: $((total - failed)) passed, $failed failed")
    fi
done
printf '%s\n' "${summary[@]}"
exit $status
