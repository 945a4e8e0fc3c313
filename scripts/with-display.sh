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
# One Wine program stays alive for the whole session (a console reading from
# a pipe that never writes): without it Wine closes its desktop a few seconds
# after the last program ends, and every program after that waits about 1.5 s
# for it to open again.
exec xvfb-run -a -s "-screen 0 1024x768x24" bash -c '
  wineserver -p
  wine cmd /c exit 0 >/dev/null 2>&1
  sleep 86400 > >(wine cmd >/dev/null 2>&1) & keeper=$!
  "$@"; rc=$?
  kill $keeper
  wineserver -k 2>/dev/null; wineserver -w 2>/dev/null
  exit $rc' with-display "$@"
