#!/usr/bin/env bash
# Checks of what goes out to photographers: the manual and the download.
#   release_checks.sh manual <KorvanthePhoto.pdf> <missing-pictures.txt> <version>
#   release_checks.sh zip <quorvex-<version>-win<bits>.zip> <KorvanthePhoto.pdf> <version> <bits>
#   release_checks.sh unpack <zip> <folder>   (installs as a photographer does)
set -u

# The manual: one page for the title and contents, then one per chapter.
CHAPTERS=("Installing Quorvex" "Correcting red eyes" "The Quorvex dialog" "Tolerance and Darkening"
          "Changing a value" "Zoom and navigation" "Messages" "Known limits and tips")
PICTURES=7 # cover, the close-up pair, four screenshots

status=0
fail() { echo "FAIL: $*" >&2 && status=1; }

mentions() { # what text phrase...
    local what=$1 text=$2 phrase
    shift 2
    for phrase in "$@"; do
        grep -qF -- "$phrase" <<<"$text" || fail "$what does not say \"$phrase\""
    done
}

# The text of one page of a PDF, on one line.
page_text() { pdftotext -f "$2" -l "$2" "$1" - | tr -s ' \n' ' ' | sed 's/^ //'; }

check_manual() {
    local pdf=$1 missing=$2 version=$3
    [ -s "$pdf" ] || { fail "$pdf was not made"; return; }
    local pages expected=$((${#CHAPTERS[@]} + 1))
    pages=$(pdfinfo "$pdf" | awk '/^Pages:/ {print $2}')
    [ "$pages" = "$expected" ] || fail "the manual has $pages pages, $expected expected"

    local title chapter
    title=$(page_text "$pdf" 1)
    mentions "the title page" "$title" "Quorvex" "version $version" "Korvanthe.8bf" \
        "KorvanthePhoto.pdf" "F1"
    for chapter in "${!CHAPTERS[@]}"; do
        mentions "the contents" "$title" "$((chapter + 1)). ${CHAPTERS[$chapter]}"
        [[ $(page_text "$pdf" $((chapter + 2))) == "${CHAPTERS[$chapter]} "* ]] ||
            fail "page $((chapter + 2)) does not start with \"${CHAPTERS[$chapter]}\""
    done

    local page=2 phrases
    while IFS='|' read -ra phrases; do # the phrases of each chapter's page, from page 2
        [ "${#phrases[@]}" = 0 ] || mentions "page $page" "$(page_text "$pdf" $page)" "${phrases[@]}"
        page=$((page + 1))
    done <<'PAGES'
32-bit|64-bit|-win32.zip|-win64.zip|Task Manager|Plug-ins|Filter ▸ Velmora ▸ Quorvex...
Select the eyes

start at 50|Raise Tolerance|Lower Tolerance|Raise Darkening|Lower Darkening
Set value|New min value is|New max value is
Increase Preview|Decrease Preview|Drag the frame|Drag the detail preview
Notice|dont support this image mode|Color mode should be RGB!
8 bits per channel only|A selection is needed|The last row and the last column
PAGES

    # Every picture is in, as itself or as a placeholder that is listed.
    local images placeholders
    images=$(pdfimages -list "$pdf" | tail -n +3 | wc -l)
    placeholders=$(wc -l <"$missing")
    [ $((images + placeholders)) = $PICTURES ] ||
        fail "the manual shows $images pictures and $placeholders placeholders, $PICTURES expected"
}

check_zip() {
    local zip=$1 manual=$2 version=$3 bits=$4
    [ "$(basename "$zip")" = "quorvex-$version-win$bits.zip" ] || fail "the download is named $zip"
    local listing
    listing=$(unzip -Z1 "$zip" | sort | tr '\n' ' ')
    [ "$listing" = "INSTALL.txt Korvanthe.8bf KorvanthePhoto.pdf " ] ||
        fail "the download holds: $listing"

    local unpacked
    unpacked=$(mktemp -d)
    unzip -q "$zip" -d "$unpacked"
    cmp -s "$unpacked/KorvanthePhoto.pdf" "$manual" ||
        fail "the download's manual is not the one built"
    local headers format
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

unpack() {
    local zip=$1 folder=$2
    rm -rf "$folder" && mkdir -p "$folder" && unzip -q "$zip" -d "$folder" ||
        fail "could not unpack $zip into $folder"
}

case "${1:-}" in
    manual) check_manual "$2" "$3" "$4" ;;
    zip) check_zip "$2" "$3" "$4" "$5" ;;
    unpack) unpack "$2" "$3" ;;
    *)
        echo "usage: $0 manual|zip|unpack ..." >&2
        exit 2
        ;;
esac
exit $status
