#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Builds the Windows installer from a complete application folder.
#
#     make_installer.sh APPLICATION_FOLDER VERSION INSTALLER
set -euo pipefail

here=$(dirname "$(realpath "$0")")
folder=$(realpath "$1")
version=$2
installer=$(realpath -m "$3")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cd "$folder"
# Sorted, since the order of files in a folder differs between machines.
renewed=$(find . -type f ! -path './txt/*' ! -path './wav/*' ! -path './db*/*' ! -path './rec/*' ! -name KeywordList.txt \
    ! -name Kotoban.exe -printf '%P\n' | LC_ALL=C sort)
notes=$(find db db_backup rec -type f | LC_ALL=C sort)
samples=$(find txt -type f -printf '%P\n' | LC_ALL=C sort)
sounds=$(find wav -type f -printf '%P\n' | LC_ALL=C sort)

# laid FOLDER TARGET: reads names of files in FOLDER and prints the instructions that install them below TARGET.
laid() {
    local source=$1 target=$2 name parent
    while read -r name; do
        parent=$(dirname "$name")
        [[ $parent != . ]] || parent=
        printf 'SetOutPath "%s"\n' "$target${parent:+\\${parent//\//\\}}"
        printf 'File "%s/%s"\n' "$source" "$name"
    done
}

# macro NAME [PARAMETER]: makes a macro of the instructions on standard input.
macro() {
    printf '!macro %s\n' "$*"
    cat
    printf '!macroend\n'
}

# The instructions that name individual files.
{
    # shellcheck disable=SC2016 # the installer's own variables
    {
        laid "$folder" '${TARGET}' <<<"$renewed" | macro RENEWED TARGET
        laid "$folder" '${TARGET}' <<<"$notes" | macro NOTES TARGET
        laid "$folder/txt" '$INSTDIR\${TARGET}' <<<"$samples" | macro SAMPLES TARGET
        laid "$folder/wav" '${TARGET}' <<<"$sounds" | macro SOUNDS TARGET
        printf 'File "%s/KeywordList.txt"\n' "$folder" | macro KEYWORDS
        {
            sed 's|/|\\|g; s|.*|Delete "$INSTDIR\\&"|' <<<"$renewed"
            xargs -d '\n' dirname <<<"$renewed" | LC_ALL=C sort -ru | sed '/^\.$/d; s|/|\\|g; s|.*|RMDir "$INSTDIR\\&"|'
        } | macro REMOVE_RENEWED
        while read -r name; do
            printf 'StrCpy $R1 "%s"\nCall ${FUNCTION}\n' "$name"
        done <<<"$sounds" | macro FOR_EACH_SOUND FUNCTION
    }
} >"$work/files.nsh"

icons=$here/../../assets/icon
convert -size 164x314 xc:'#e6ecf4' "$icons/kotoban-128.png" -gravity north -geometry +0+48 -composite -alpha off \
    "BMP3:$work/picture.bmp"
bytes=$(find . -type f -printf '%s\n' | paste -sd+) # an expression that is evaluated below
makensis -V2 -WX -INPUTCHARSET UTF8 "-DVERSION=$version" "-DFOLDER=$folder" "-DFILES=$work/files.nsh" \
    "-DKILOBYTES=$((bytes / 1024))" "-DICON=$icons/kotoban.ico" "-DPICTURE=$work/picture.bmp" \
    "-DSIGN=$(realpath "$here/../../scripts/sign.sh")" "-DOUTPUT=$installer" "$here/installer.nsi"
