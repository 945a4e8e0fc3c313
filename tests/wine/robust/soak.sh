#!/usr/bin/env bash
# The long host campaign: COUNT hosts of one seed, split over JOBS niced
# processes logging into the build folder. Usage: soak.sh BUILD [COUNT] [JOBS]
#   SOAK_SEED=N      replay a whole campaign (default: a fresh seed)
#   SOAK_HEADLESS=1  no display: every window the module opens fails at once,
#                    as on a host without a desktop (several times faster)
set -u
cd "$(dirname "$0")/../../.."
build=${1:?build folder} count=${2:-100000} jobs=${3:-2} seed=${SOAK_SEED:-$(date +%s)}
export DIR=$build/tests/wine/robust SEED=$seed COUNT=$count JOBS=$jobs PER=$(((count + jobs - 1) / jobs))
echo "soak: seed $seed, $count hosts in $jobs processes, logs in $DIR/soak-*.log"
rm -f "$DIR"/soak-*.log
campaign='for ((j = 0; j < JOBS; j++)); do
    first=$((j * PER)) && n=$((COUNT - first < PER ? COUNT - first : PER))
    (cd "$DIR" && nice wine robust_campaign.exe --seed $SEED --first $first --count $n \
       --largest-side 400 >soak-$j.log 2>&1) &
  done; wait'
if [ "${SOAK_HEADLESS:-0}" = 1 ]; then
    . scripts/wine-env.sh "$build" && scripts/wine-prefix.sh "$build"
    stop() { wineserver -k 2>/dev/null; wineserver -w 2>/dev/null; }
    stop; env -u DISPLAY bash -c "$campaign"; stop
else
    bash scripts/with-display.sh "$build" bash -c "$campaign"
fi
logs=$(cat "$DIR"/soak-*.log | tr -d '\r') # Wine ends its console lines with CR LF
grep -A6 -E "^(FAIL|FAULT)" <<<"$logs"
set -- $(grep -E "^[0-9]+ passed, [0-9]+ failed" <<<"$logs" | awk '{p += $1; f += $3} END {print p + 0, f + 0}')
echo "soak: seed $seed, $1 passed, $2 failed"
[ "$2" = 0 ] && [ "$1" = "$count" ]
