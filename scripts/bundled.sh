# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2154
# Sourced by static_qt.sh: updates the copies of libraries in Qt's source. Needs say of setup.sh, source_of,
# fetch_source and current_source_of of static_qt.sh, and the variables cache and allow_old.

# replace_libpng SOURCE: replaces the copy of libpng in Qt's source with the source of this machine's libpng-dev, whose
# static library is what the Linux archive contains. Security fixes reach the distribution first, and pictures are
# untrusted files. Qt's configuration of it (pnglibconf.h) is kept, and so is the whole copy if the versions differ, since
# the distribution's newer Qt then has a newer copy. The file SOURCE in the copy records its origin for the SBOM.
replace_libpng() {
    local copy=$1/src/3rdparty/libpng package fetched=$cache/work/libpng file name
    [[ ! -e $copy/SOURCE ]] || return 0
    package=$(source_of libpng-dev)
    rm -rf "$fetched"
    # A mirror may lack the source of the newest version, or have it only. With --allow-old it is what the mirror has.
    if [[ -n $allow_old ]]; then
        package=${package%=*}
    fi
    fetch_source "$package" "$fetched"
    if cmp -s <(grep -m 1 'libpng version' "$fetched/png.h") <(grep -m 1 'libpng version' "$copy/png.h"); then
        for file in "$fetched"/png*.[ch]; do
            name=${file##*/}
            [[ $name == pnglibconf.h || ! -e $copy/$name ]] || cp "$file" "$copy/$name"
        done
        printf '%s=%s\n' "${package%=*}" "$(dpkg-parsechangelog -l "$fetched/debian/changelog" -S Version)" >"$copy/SOURCE"
    fi
    rm -rf "$fetched"
}

# check_replaced_libpng ATTRIBUTIONS: adds to old_libraries a libpng in Qt, named in the list of its parts, that is not the
# distribution's current version. Only a build with allow_old can have such a one.
check_replaced_libpng() {
    local inside current
    inside=$(sed -n 's/.*"package": "\(libpng[^"]*\)".*/\1/p' "$1")
    current=$(current_source_of libpng-dev)
    [[ $inside == "$current" ]] || old_libraries+=("libpng in Qt: ${inside:-Qt has its own}, current: ${current:-unknown}")
}
