# Sourced by the scripts that run Windows programs: one private Wine prefix
# under the build folder, quiet, 32-bit.
export WINEPREFIX="${WINEPREFIX:-$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/build/wineprefix}"
export WINEARCH=win32
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
