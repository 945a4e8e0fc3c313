#!/usr/bin/env bash
# Makes the downloads out/quorvex-<version>-win32.zip and -win64.zip. Under
# Xvfb, in the first build this machine can run, it runs the GUI tests that
# take the manual's screenshots; every build renders the manual with them and
# with the demo's before/after pictures (run `make demo` first), packs its zip
# and runs the release checks on it, the installed module's tests wherever it
# can run. A manual that still has a placeholder is not shipped.
#   scripts/release.sh <win-build-dir>...   (default build/win32 build/win64)
set -eu
root="$(cd "$(dirname "$0")/.." && pwd)"
[ $# -gt 0 ] || set -- "$root/build/win32" "$root/build/win64"

# The tests whose screenshots the manual shows.
shots='^(PreviewPanes\.|SetValueDialogTest\.DescribesTheFieldItEdits$|SmallDialogTest\.Notice)'

shooter=
for build in "$@"; do
    if bash "$root/scripts/can-run.sh" "$build" >/dev/null; then shooter=$build; break; fi
done
[ -n "$shooter" ] || { echo "release: this machine can run none of the builds $*" >&2; exit 1; }
bash "$root/scripts/with-display.sh" "$shooter" bash -c \
    "cd '$shooter' && ctest -R '$shots' --output-on-failure --timeout 120"

mkdir -p "$root/out"
for build in "$@"; do
    build="$(cd "$build" && pwd)"
    version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
    arch=$(cat "$build/wine-arch")
    zip="$build/release/quorvex-$version-$arch.zip"
    manual="$build/docs/manual/KorvanthePhoto.pdf"
    missing="$build/docs/manual/missing-pictures.txt"
    [ "$build" = "$(cd "$shooter" && pwd)" ] || cp "$shooter"/artifacts/*.png "$build/artifacts/"
    cmake --build "$build" --target release_zip
    if reason=$(bash "$root/scripts/can-run.sh" "$build"); then
        bash "$root/scripts/with-display.sh" "$build" bash -c \
            "cd '$build' && ctest -R '^(release|InstalledModule)\.' --output-on-failure --timeout 120"
    else
        # ctest would start every test program to list its tests: check directly.
        checks="$root/tests/wine/release/release_checks.sh"
        bash "$checks" manual "$manual" "$missing" "$version"
        bash "$checks" zip "$zip" "$manual" "$version" "${arch#win}"
        echo "release: $(basename "$zip")'s module was not tried installed: $reason"
    fi
    if [ -s "$missing" ]; then
        echo "release: the manual still lacks $(tr '\n' ' ' <"$missing")(see docs/manual)" >&2
        exit 1
    fi
    cp "$zip" "$root/out/"
    echo "release: wrote out/$(basename "$zip")"
done
