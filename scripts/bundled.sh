# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2154
# Sourced by what builds a static Qt: brings the copies of libraries in Qt's source up to date. Needs say and
# install_missing of setup.sh, source_of and fetch_source of windows.sh, and the folder cache.

# renew_libpng SOURCE: puts the distribution's libpng in the place of the copy in the source of a Qt. Security fixes come
# to the distribution first, and pictures are files from elsewhere. Qt's configuration of it (pnglibconf.h) stays, and so
# does the whole copy where the versions differ: the distribution's newer Qt then has a newer copy. The file SOURCE tells
# the SBOM where the copy is from.
renew_libpng() {
    local copy=$1/src/3rdparty/libpng package fetched=$cache/work/libpng file name
    [[ ! -e $copy/SOURCE ]] || return 0
    package=$(source_of libpng-dev)
    rm -rf "$fetched"
    # A mirror may lack the sources of the security updates; what the last point release holds is the next best.
    fetch_source "$package" "$fetched" || true
    if [[ ! -d $fetched ]]; then
        say "the source of $package cannot be had: taking the one of the last point release"
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
