#!/usr/bin/env bash
# Exits 0 when this machine can run the given Windows build under Wine, and
# otherwise says why on standard output. Some machines run 64-bit programs
# only: there the 32-bit Wine loader itself fails ("Exec format error").
#   scripts/can-run.sh <win-build-dir>
arch=$(cat "${1:?win-build-dir}/wine-arch") || exit 1
bits=${arch#win}
loader=$([ "$bits" = 64 ] && echo /usr/lib/wine/wine64 || echo /usr/lib/wine/wine)
if [ ! -e "$loader" ]; then
    echo "the Wine loader $loader is not installed"
    exit 1
fi
if ! error=$("$loader" --version 2>&1 >/dev/null); then
    echo "this machine cannot execute $bits-bit programs ($loader: ${error##*: })"
    exit 1
fi
