#!/usr/bin/env bash
# Creates a Windows build's private Wine prefix once: fonts for
# machine-independent rendering, a virtual desktop (no window manager needed)
# and no crash dialog.
#   scripts/wine-prefix.sh [win-build-dir]   (default build/win32)
set -eu
. "$(dirname "$0")/wine-env.sh" "${1:-}"
if [ -f "$WINEPREFIX/.quorvex-ready" ]; then
    exit 0
fi
mkdir -p "$WINEPREFIX"
wine wineboot.exe -i >/dev/null 2>&1 || true
if [ ! -d "$WINEPREFIX/drive_c/windows/Fonts" ]; then
    echo "wine-prefix: Wine could not create the $WINEARCH prefix $WINEPREFIX" >&2
    exit 1
fi
ln -sf /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null 2>&1
wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1024x768 /f >/dev/null 2>&1
wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1
wineserver -w
touch "$WINEPREFIX/.quorvex-ready"
