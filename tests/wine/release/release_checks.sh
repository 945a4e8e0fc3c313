#!/usr/bin/env bash
# Checks of what goes out to photographers: the manual and the download.
#   release_checks.sh manual <KorvanthePhoto.pdf> <missing-pictures.txt> <version>
#   release_checks.sh zip <quorvex-<version>-win<bits>.zip> <KorvanthePhoto.pdf> <version> <bits>
set -u
status=0
fail() { echo "FAIL: $*" >&2 && status=1; }

mentions() { # what text phrase...
    local what=$1 text=$2 phrase
    shift 2
    for phrase in "$@"; do
        grep -qF -- "$phrase" <<<"$text" || fail "$what does not say \"$phrase\""
    done
}

page_text() { pdftotext -f "$2" -l "$2" "$1" - | tr -s ' \n' ' ' | sed 's/^ //'; }

# A title page with the contents, then a page per chapter that starts with its
# title and says its phrases; seven pictures (cover, the close-up pair, four
# screenshots), each shown or listed as a placeholder.
manual() {
    local pdf=$1 missing=$2 version=$3 page=1 title text chapter phrases
    [ -s "$pdf" ] || { fail "$pdf was not made"; return; }
    title=$(page_text "$pdf" 1)
    mentions "the title page" "$title" "Quorvex" "version $version" "Korvanthe.8bf" \
        "KorvanthePhoto.pdf" "F1"
    while IFS='|' read -r chapter phrases; do
        page=$((page + 1))
        mentions "the contents" "$title" "$((page - 1)). $chapter"
        text=$(page_text "$pdf" $page)
        [[ $text == "$chapter "* ]] || fail "page $page does not start with \"$chapter\""
        IFS='|' read -ra phrases <<<"$phrases"
        mentions "page $page" "$text" "${phrases[@]}"
    done <<'PAGES'
Installing Quorvex|32-bit|64-bit|-win32.zip|-win64.zip|Task Manager|Plug-ins|Filter ▸ Velmora ▸ Quorvex...
Correcting red eyes|Select the eyes
The Quorvex dialog
Tolerance and Darkening|start at 50|Raise Tolerance|Lower Tolerance|Raise Darkening|Lower Darkening
Changing a value|Set value|New min value is|New max value is
Zoom and navigation|Increase Preview|Decrease Preview|Drag the frame|Drag the detail preview
Messages|Notice|dont support this image mode|Color mode should be RGB!
Known limits and tips|8 bits per channel only|A selection is needed|The last row and the last column
PAGES
    local pages images placeholders
    pages=$(pdfinfo "$pdf" | awk '/^Pages:/ {print $2}')
    [ "$pages" = $page ] || fail "the manual has $pages pages, $page expected"
    images=$(pdfimages -list "$pdf" | tail -n +3 | wc -l)
    placeholders=$(wc -l <"$missing")
    [ $((images + placeholders)) = 7 ] ||
        fail "the manual shows $images pictures and $placeholders placeholders, 7 expected"
}

# The download: its name, its three files, the manual built, the filter module
# of its bits, and INSTALL.txt with Windows line ends.
zip() {
    local zip=$1 manual=$2 version=$3 bits=$4 listing unpacked headers format
    [ "$(basename "$zip")" = "quorvex-$version-win$bits.zip" ] || fail "the download is named $zip"
    listing=$(unzip -Z1 "$zip" | sort | tr '\n' ' ')
    [ "$listing" = "INSTALL.txt Korvanthe.8bf KorvanthePhoto.pdf " ] ||
        fail "the download holds: $listing"
    unpacked=$(mktemp -d)
    unzip -q "$zip" -d "$unpacked"
    cmp -s "$unpacked/KorvanthePhoto.pdf" "$manual" || fail "the download's manual is not the one built"
    format=$([ "$bits" = 64 ] && echo pei-x86-64 || echo pei-i386)
    headers=$(x86_64-w64-mingw32-objdump -p "$unpacked/Korvanthe.8bf")
    grep -q "file format $format" <<<"$headers" && grep -qw ENTRYPOINT <<<"$headers" &&
        grep -qw DissolveProc <<<"$headers" ||
        fail "the download's Korvanthe.8bf is not the $bits-bit filter module"
    local install=$unpacked/INSTALL.txt
    grep -q $'\r$' "$install" && ! grep -qv $'\r$' "$install" ||
        fail "INSTALL.txt does not have Windows line ends"
    mentions "INSTALL.txt" "$(tr -d '\r' <"$install")" "Quorvex $version" "Korvanthe.8bf" \
        "KorvanthePhoto.pdf" "Plug-ins" "This is the $bits-bit Quorvex" "-win32.zip" "-win64.zip" \
        "Task Manager" "Filter > Velmora > Quorvex..."
    rm -rf "$unpacked"
}

case "${1:-}" in
    manual | zip) "$@" ;;
    *) echo "usage: $0 manual|zip ..." >&2 && exit 2 ;;
esac
exit $status
