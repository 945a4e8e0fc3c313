#!/usr/bin/env bash
# Makes the download out/quorvex-<version>-win32.zip. Under Xvfb it runs the
# GUI tests that take the manual's screenshots, renders the manual with them
# and with the demo's before/after pictures (run `make demo` first), packs the
# zip and runs the release checks on it. A manual that still has a
# placeholder is not shipped.
#   scripts/release.sh [win-build-dir]   (default build/win)
set -eu
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "${1:-$root/build/win}" && pwd)"
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
zip="$build/release/quorvex-$version-win32.zip"
missing="$build/docs/manual/missing-pictures.txt"

# The tests whose screenshots the manual shows.
shots='^(DialogPictures\.|SetValueDialogTest\.DescribesTheFieldItEdits$|SmallDialogTest\.Notice)'

bash "$root/scripts/with-display.sh" bash -c "
  cd '$build' &&
  ctest -R '$shots' --output-on-failure --timeout 120 &&
  cmake --build . --target release_zip &&
  ctest -R '^(release|InstalledModule)\.' --output-on-failure --timeout 120"

if [ -s "$missing" ]; then
    echo "release: the manual still lacks $(tr '\n' ' ' <"$missing")(see docs/manual)" >&2
    exit 1
fi
mkdir -p "$root/out"
cp "$zip" "$root/out/"
echo "release: wrote out/$(basename "$zip")"
