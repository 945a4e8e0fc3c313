#!/usr/bin/env bash
# Installs what the build and the tests need on a Debian 12 machine (run as root).
# Idempotent: does nothing when everything is already there.
set -u

need=()
have_pkg() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }

# Both Windows builds: the i686 and x86-64 MinGW compilers, and Wine with its
# 32-bit loader (wine32:i386) and its 64-bit one (wine64). On a machine that
# runs 64-bit programs only, the i386 packages' install scripts print "Exec
# format error"; the packages still install, and only the 64-bit build runs.
# python3-markdown, python3-reportlab and fonts-dejavu-core render the user
# manual (8 packages, about 5 MB installed).
PKGS="g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix wine wine32:i386 wine64 \
xvfb xauth fonts-wine imagemagick \
cmake make g++ googletest libgtest-dev libbenchmark-dev clang-format python3 poppler-utils \
zip unzip python3-markdown python3-reportlab fonts-dejavu-core clang libclang-rt-14-dev"

for p in $PKGS; do have_pkg "$p" || need+=("$p"); done
[ -x /usr/lib/wine/wine ] || need+=("wine32:i386")
[ -x /usr/lib/wine/wine64 ] || need+=("wine64")

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

# wine64 alone runs a 32-bit program as a silent no-op: insist on both loaders
# being installed (whether this machine can execute the 32-bit one is asked
# when the tests run, not here).
for loader in /usr/lib/wine/wine /usr/lib/wine/wine64; do
  if [ ! -x "$loader" ]; then
    echo "install-deps: the Wine loader $loader is missing" >&2
    exit 1
  fi
done
