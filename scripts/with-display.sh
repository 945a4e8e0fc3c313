#!/usr/bin/env bash
# Runs a command under Xvfb with one persistent wineserver for all the Wine
# processes it starts, in the prefix of the given Windows build. A server left
# over from a headless run would make every window fail, so it is stopped first.
#   scripts/with-display.sh <win-build-dir> <command> [args...]
set -u
. "$(dirname "$0")/wine-env.sh" "${1:?win-build-dir}"
shift
"$(dirname "$0")/wine-prefix.sh" "$QUORVEX_WIN_BUILD" || exit 1
wineserver -k 2>/dev/null; wineserver -w 2>/dev/null
exec xvfb-run -a -s "-screen 0 1024x768x24" bash -c '
  wineserver -p
  wine cmd /c exit 0 >/dev/null 2>&1
  "$@"; rc=$?
  wineserver -k 2>/dev/null; wineserver -w 2>/dev/null
  exit $rc' with-display "$@"
