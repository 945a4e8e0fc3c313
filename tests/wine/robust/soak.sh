#!/usr/bin/env bash
# The long host campaign: COUNT configurations of one seed, split over JOBS
# processes that run niced side by side; each writes its log into the build
# folder. Usage: soak.sh BUILD_DIR [COUNT] [JOBS]
#   SOAK_SEED=N       replay a whole campaign (default: a fresh seed)
#   SOAK_ARGS=...     more campaign options (e.g. --module PATH)
#   SOAK_HEADLESS=1   no display: every window the module opens fails at
#                     once, as on a host without a desktop (several times faster)
set -u
cd "$(dirname "$0")/../../.."
build=${1:?build folder}
count=${2:-100000}
jobs=${3:-2}
seed=${SOAK_SEED:-$(date +%s)}
dir="$build/tests/wine/robust"
per=$(( (count + jobs - 1) / jobs ))
echo "soak: seed $seed, $count configurations in $jobs processes, logs in $dir/soak-*.log"
# Logs of an earlier campaign with more processes would be counted too.
rm -f "$dir"/soak-*.log

campaign='
  pids=()
  for ((j = 0; j < JOBS; j++)); do
    first=$((j * PER)); n=$((COUNT - first < PER ? COUNT - first : PER))
    (cd "$DIR" && nice wine robust_campaign.exe --seed "$SEED" --first $first --count $n \
       --largest-side 400 --band-bytes 8000000 --bands 12 $SOAK_ARGS > soak-$j.log 2>&1) &
    pids+=($!)
  done
  rc=0
  for p in "${pids[@]}"; do wait "$p" || rc=1; done
  exit $rc'
export JOBS=$jobs PER=$per COUNT=$count SEED=$seed DIR=$dir SOAK_ARGS=${SOAK_ARGS:-}
if [ "${SOAK_HEADLESS:-0}" = 1 ]; then
    . scripts/wine-env.sh "$build"
    scripts/wine-prefix.sh "$build"
    wineserver -k 2>/dev/null; wineserver -w 2>/dev/null
    env -u DISPLAY bash -c "$campaign"; rc=$?
    wineserver -k 2>/dev/null; wineserver -w 2>/dev/null
else
    bash scripts/with-display.sh "$build" bash -c "$campaign"; rc=$?
fi
# Wine ends its console lines with CR LF.
logs=$(cat "$dir"/soak-*.log | tr -d '\r')
grep -A6 -E "^(FAIL|FAULT)" <<<"$logs"
passed=$(grep -E "^[0-9]+ passed, [0-9]+ failed$" <<<"$logs" | awk '{p += $1; f += $3} END {print p + 0, f + 0}')
set -- $passed
echo "soak: seed $seed"
echo "$1 passed, $2 failed"
[ "$rc" = 0 ] && [ "$2" = 0 ] && [ "$1" = "$count" ]
