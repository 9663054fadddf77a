# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2154
# Sourced by static_qt.sh: updates the copies of libraries in Qt's source. Needs say of setup.sh, source_of and
# fetch_source of static_qt.sh, and the variable cache.

# replace_libpng SOURCE: replaces the copy of libpng in Qt's source with the distribution's libpng. Security fixes reach
# the distribution first, and pictures are untrusted files. Qt's configuration of it (pnglibconf.h) is kept, and so is
# the whole copy if the versions differ, since the distribution's newer Qt then has a newer copy. The file SOURCE in the
# copy records its origin for the SBOM.
replace_libpng() {
    local copy=$1/src/3rdparty/libpng package fetched=$cache/work/libpng file name
    [[ ! -e $copy/SOURCE ]] || return 0
    package=$(source_of libpng-dev)
    rm -rf "$fetched"
    # A mirror may lack the sources of security updates; the next best are those of the last point release.
    fetch_source "$package" "$fetched" || true
    if [[ ! -d $fetched ]]; then
        say "the source of $package is not available: using that of the last point release"
        # shellcheck source=/dev/null
        fetch_source "${package%=*}/$(source /etc/os-release && printf %s "$VERSION_CODENAME")" "$fetched"
    fi
    if cmp -s <(grep -m 1 'libpng version' "$fetched/png.h") <(grep -m 1 'libpng version' "$copy/png.h"); then
        for file in "$fetched"/png*.[ch]; do
            name=${file##*/}
            [[ $name == pnglibconf.h || ! -e $copy/$name ]] || cp "$file" "$copy/$name"
        done
        printf '%s=%s\n' "${package%=*}" "$(dpkg-parsechangelog -l "$fetched/debian/changelog" -S Version)" >"$copy/SOURCE"
    fi
    rm -rf "$fetched"
}

# tell_of_old_libpng: says if the libpng in the Qt in qt_folder is not the one that this machine has.
tell_of_old_libpng() {
    local inside wanted
    inside=$(sed -n 's/.*"package": "\(libpng[^"]*\)".*/\1/p' "$qt_folder/attributions.json")
    wanted=$(source_of libpng-dev)
    [[ $inside == "$wanted" ]] ||
        say "the program contains ${inside:-the libpng of Qt} instead of $wanted; to look for that again, remove $qt_folder"
}
