# Sourced by the scripts that run Windows programs, with a Windows build folder
# as its argument (default build/win32): that build's own Wine prefix, of its
# own architecture, quiet. Sets QUORVEX_WIN_BUILD and QUORVEX_WIN_ARCH.
quorvex_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
QUORVEX_WIN_BUILD="$(cd "${1:-$quorvex_root/build/win32}" && pwd)"
# win32 or win64, written by CMake when the build folder is configured.
QUORVEX_WIN_ARCH=$(cat "$QUORVEX_WIN_BUILD/wine-arch")
export WINEPREFIX="$QUORVEX_WIN_BUILD/wineprefix"
export WINEARCH=$QUORVEX_WIN_ARCH
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
if [ "$QUORVEX_WIN_ARCH" = win64 ]; then
    export WINELOADER=/usr/lib/wine/wine64
    case ":$PATH:" in
        *":$quorvex_root/scripts/wine64:"*) ;;
        *) export PATH="$quorvex_root/scripts/wine64:$PATH" ;;
    esac
else
    unset WINELOADER
fi
