#!/usr/bin/env bash
# Installs what the build and the tests need on a Debian 12 machine (run as root).
# Idempotent: does nothing when everything is already there.
set -u

need=()
have_pkg() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }

# python3-markdown, python3-reportlab and fonts-dejavu-core render the user
# manual (8 packages, about 5 MB installed).
PKGS="g++-mingw-w64-i686-posix wine wine32:i386 xvfb xauth fonts-wine imagemagick \
cmake make g++ googletest libgtest-dev libbenchmark-dev clang-format python3 poppler-utils \
zip unzip python3-markdown python3-reportlab fonts-dejavu-core clang libclang-rt-14-dev"

for p in $PKGS; do have_pkg "$p" || need+=("$p"); done
[ -x /usr/lib/wine/wine ] || need+=("wine32:i386")

if [ ${#need[@]} -eq 0 ]; then
  exit 0
fi

if [ "$(id -u)" != 0 ]; then
  echo "install-deps: missing packages (${need[*]}); run this script as root" >&2
  exit 1
fi

echo "install-deps: installing ${need[*]}"
export DEBIAN_FRONTEND=noninteractive
dpkg --add-architecture i386
# A half-synced mirror can make 'apt-get update' fail for one index; the fallbacks below cope.
apt-get update || echo "install-deps: apt-get update reported errors; continuing"
apt-get install -y --no-install-recommends "${need[@]}" \
  || apt-get install -y --no-install-recommends -t bookworm "${need[@]}" \
  || {
    printf 'Package: *\nPin: release n=bookworm\nPin-Priority: 1001\n' >/etc/apt/preferences.d/99-quorvex-bookworm
    apt-get install -y --no-install-recommends --allow-downgrades "${need[@]}"
    rc=$?
    rm -f /etc/apt/preferences.d/99-quorvex-bookworm
    [ $rc -eq 0 ]
  } || { echo "install-deps: package installation failed" >&2; exit 1; }

# wine64 alone runs a 32-bit program as a silent no-op: insist on the 32-bit loader.
if [ ! -x /usr/lib/wine/wine ]; then
  echo "install-deps: the 32-bit Wine loader (wine32:i386) is missing" >&2
  exit 1
fi
