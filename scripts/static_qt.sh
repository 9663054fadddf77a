# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by windows.sh and linux_libraries.sh: builds a static Qt from the distribution's source package, once, in the
# folder $cache outside the repository. A folder gets its final name there only when it is complete. Needs say of
# setup.sh, and the variables cache, compiler and toolchain.
# shellcheck source=scripts/bundled.sh
source scripts/bundled.sh

# source_of PACKAGE: prints the source package of an installed package, as NAME=VERSION. Qt must have the same version
# as the tools (moc, rcc) that run here.
source_of() {
    # shellcheck disable=SC2016 # dpkg-query's own variables
    dpkg-query -W -f '${source:Package}=${source:Version}' "$1"
}

# logged FILE COMMAND...: runs a command with its output going to a file, and shows the last lines if it fails.
logged() {
    local log=$1
    shift
    if "$@" >"$log" 2>&1; then
        rm "$log"
    else
        tail -n 20 "$log" >&2
        return 1
    fi
}

# recipe_of WORD...: prints a hash of everything that a library is built with, except its source and comments.
recipe_of() {
    { printf '%s\n' "$@" "$("$compiler" -dumpfullversion)" && grep -v '^#' "$toolchain"; } | sha256sum | head -c 8
}

# read_package_lists: fetches the lists of packages and of sources from the repositories that are configured on this
# machine for binary packages, and sets apt_options to read them. They are separate lists, so that the system's settings
# stay unchanged. Without a connection there are none afterwards.
read_package_lists() {
    [[ -z ${apt_options:-} ]] || return 0
    local lists=$cache/apt kind
    rm -rf "$lists"
    mkdir -p "$lists/lists/partial"
    for kind in deb deb-src; do
        # shellcheck disable=SC2016 # apt-get's own variables
        apt-get indextargets --format "$kind"' $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages'
    done | sort -u >"$lists/sources.list"
    apt_options=(-qq -o "Dir::Etc::SourceList=$lists/sources.list" -o Dir::Etc::SourceParts=/dev/null
        -o "Dir::State::Lists=$lists/lists" -o "Dir::Cache::pkgcache=$lists/packages" -o Dir::Cache::srcpkgcache=
        -o APT::Sandbox::User=root)
    say "reading the lists of the distribution's packages"
    # Another repository may be unreachable, or signed with a key that only its own settings name.
    apt-get "${apt_options[@]}" update || say "not all package repositories could be read"
}

# current_source_of PACKAGE: prints the source package of the distribution's current version of a package, as NAME=VERSION:
# the one that apt-get would install on a machine without it, not a newer one of backports. Nothing if no repository has
# the package. Needs the lists of read_package_lists.
current_source_of() {
    local version cached=(apt-cache "${apt_options[@]}" -o Dir::State::Status=/dev/null)
    version=$(LC_ALL=C.UTF-8 "${cached[@]}" policy "$1" | sed -n 's/^  Candidate: //p')
    [[ -n $version && $version != '(none)' ]] || return 0
    # A record names its source only where that has another name or version, the latter in brackets.
    "${cached[@]}" show "$1=$version" | awk '
        /^Package:/ && !name { name = $2 }
        /^Version:/ && !version { version = $2 }
        /^Source:/ { name = $2 }
        /^Source:.*\(/ { version = substr($3, 2, length($3) - 2) }
        END { print name "=" version }'
}

# check_linked_in PACKAGE...: ends the build unless each package, of which code is linked in, is the distribution's current
# version, which has all its security fixes. With allow_old, lists the others in old_libraries, for sum_packages, instead.
check_linked_in() {
    local package installed current
    read_package_lists
    old_libraries=()
    for package in "$@"; do
        installed=$(source_of "$package")
        current=$(current_source_of "$package")
        [[ $installed == "$current" ]] || old_libraries+=("$package: $installed, current: ${current:-unknown}")
    done
    [[ ${#old_libraries[@]} -gt 0 ]] || return 0
    printf 'old: %s\n' "${old_libraries[@]}" >&2
    if [[ -z $allow_old ]]; then
        printf 'Their code would be linked in. Run apt upgrade, or give --allow-old for packages that are no release.\n' >&2
        exit 1
    fi
}

# fetch_source NAME=VERSION FOLDER: downloads and unpacks a source package.
fetch_source() {
    local package=$1 folder=$2
    [[ ! -d $folder ]] || return 0
    read_package_lists
    say "fetching the source package $package"
    rm -rf "$folder.new"
    mkdir -p "$folder.new"
    logged "$folder.log" env -C "$folder.new" apt-get "${apt_options[@]}" source "$package" || return 1
    mv "$folder.new"/*/ "$folder"
    rm -rf "$folder.new"
}

# Hardening options for the program's libraries, in addition to the compiler's defaults.
hardening="-fstack-protector-strong"

# Features that the program does not use are off, so that Qt needs few libraries. Qt looks for some of its files at its
# prefix, so this must be a folder that exists on no user's machine.
qt_prefix=/nonexistent/qt
qt_options=(-G Ninja -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no
    "-DCMAKE_INSTALL_PREFIX=$qt_prefix")
for feature in concurrent network opengl printsupport sql tabletevent vulkan xml; do
    qt_options+=("-DFEATURE_$feature=OFF")
done
for library in doubleconversion harfbuzz; do
    qt_options+=("-DFEATURE_system_$library=OFF")
done

# build_qt SYSTEM OPTION...: builds Qt, unless it is in the cache already, and sets qt_folder to the folder of the
# installed Qt. Takes a quarter of an hour on two cores; after an interruption, the next call resumes the build.
build_qt() {
    local system=$1 package
    shift
    local options=("${qt_options[@]}" "$@")
    package=$(source_of qt6-base-dev)
    local ingredients=("${options[@]}" "$hardening" attributions)
    [[ ${options[*]} != *system_png=OFF* ]] || ingredients+=("$(source_of libpng-dev)$allow_old")
    [[ $system != Linux ]] || ingredients+=("$(source_of qt6-wayland-dev-tools)" "$wayland_folder" "$wayland_change")
    qt_folder=$cache/${package/=/-}-$(recipe_of "${ingredients[@]}")
    [[ ! -d $qt_folder ]] || return 0
    # The tools that run during the build are this machine's.
    local qt_host=(-DQT_HOST_PATH=/usr
        "-DQT_HOST_PATH_CMAKE_DIR=/usr/lib/$(dpkg-architecture -q DEB_HOST_MULTIARCH)/cmake")
    local source=$cache/work/${package/=/-} build=$qt_folder.build stage=$qt_folder.stage
    fetch_source "$package" "$source"
    [[ ${options[*]} != *system_png=OFF* ]] || replace_libpng "$source"
    say "building a static Qt for $system in $cache; this takes a while, but only once"
    local flags="$hardening -ffile-prefix-map=$source=qt6-base -ffile-prefix-map=$build=qt6-base"
    # The configuration report goes to a file; the progress of the build is shown.
    logged "$qt_folder.log" cmake -S "$source" -B "$build" "${options[@]}" "-DCMAKE_TOOLCHAIN_FILE=$toolchain" \
        "-DCMAKE_C_FLAGS=$flags" "-DCMAKE_CXX_FLAGS=$flags" "${qt_host[@]}"
    cmake --build "$build"
    rm -rf "$stage"
    DESTDIR=$stage cmake --install "$build" >/dev/null
    scripts/sbom.py qt-parts "$source" "$build" "$stage$qt_prefix/attributions.json"
    [[ $system != Linux ]] || add_wayland "$stage$qt_prefix"
    mv "$stage$qt_prefix" "$qt_folder"
    rm -rf "$stage" "$build" "$source"
}

# fresh_build_folder FOLDER LIBRARIES PACKAGE...: removes a build folder that was configured with other libraries or other
# versions of the packages: CMake caches where it has found libraries, and Ninja does not notice one that was updated to
# a file older than the program.
fresh_build_folder() {
    local folder=$1 libraries
    libraries=$(printf '%s\n' "$2" && shift 2 && dpkg-query -W "$@")
    if [[ $(cat "$folder/libraries" 2>/dev/null) != "$libraries" ]]; then
        rm -rf "$folder"
        mkdir -p "$folder"
        printf '%s\n' "$libraries" >"$folder/libraries"
    fi
}
