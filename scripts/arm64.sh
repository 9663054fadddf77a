# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by ./package: makes folders with the libraries of a Debian on arm64, from the distribution's packages, without
# changing this machine's own, and builds and tests the Debian package for arm64 with them. Needs setup.sh and static_qt.sh.
#
# dpkg's database in these folders is written here, since nothing is installed: it names the packages and their files.

# The cross compiler, and an emulator of that processor.
arm64_packages=(g++-aarch64-linux-gnu qemu-user-static)
# What the program and its tests are built with there, and what tells the libraries that the package depends on.
arm64_libraries=('?essential' libstdc++-12-dev qt6-base-dev libgl1-mesa-dev libsqlite3-dev libgtest-dev libgmock-dev dpkg-dev)

# make_arm64_root FOLDER PACKAGE...: unpacks packages for arm64, and all that they depend on, into FOLDER, unless it has
# them already. Where PACKAGE is the path of a package file, only what that depends on. Nothing in them is run; dpkg's
# database there names what is installed, so that dpkg-shlibdeps can tell which package has a library.
make_arm64_root() {
    local folder=$1 lists=$cache/arm64-lists debs=$cache/arm64-debs control kind name deb wanted database
    shift
    mkdir -p "$lists/partial" "$debs/partial" "$cache/arm64-dpkg"
    : >"$cache/arm64-dpkg/status" # nothing is installed; apt-get writes its locks beside it
    read_package_lists
    local options=("${apt_options[@]}" -o APT::Architecture=arm64 -o APT::Architectures::=arm64
        -o "Dir::State::Lists=$lists" -o "Dir::State::Status=$cache/arm64-dpkg/status" -o "Dir::Cache::archives=$debs")
    apt-get "${options[@]}" update || say "not all package repositories could be read"
    # What is in the archives already would not be printed.
    wanted=$(apt-get "${options[@]}" -o "Dir::Cache::archives=$lists" --print-uris --yes --no-install-recommends install "$@" | sed "s/^'[^']*' //" | sort)
    [[ "$(cat "$folder/packages" 2>/dev/null)" != "$wanted" ]] || return 0
    say "fetching a system for arm64: $*"
    apt-get "${options[@]}" --download-only --yes --no-install-recommends install "$@"
    rm -rf "$folder"
    database=$folder/var/lib/dpkg
    mkdir -p "$folder"/usr/{bin,lib,sbin} "$database"/{info,updates}
    ln -s usr/bin usr/lib usr/sbin "$folder"
    printf 'amd64\narm64\n' >"$database/arch"
    printf '1\n' >"$database/info/format" # names of files have the architecture in them
    control=$(mktemp -d)
    while read -r name _; do
        deb=$debs/$name
        [[ -e $deb ]] || continue # a package file of the caller's
        dpkg-deb --fsys-tarfile "$deb" | tar -x --keep-directory-symlink -C "$folder"
        rm -rf "${control:?}"/*
        dpkg-deb --control "$deb" "$control"
        name=$(sed -n 's/^Package: //p' "$control/control")
        ! grep -qx 'Multi-Arch: same' "$control/control" || name+=:arm64
        dpkg-deb --fsys-tarfile "$deb" | tar -t | sed 's|^\.||; s|/$||; s|^$|/.|' >"$database/info/$name.list"
        for kind in shlibs symbols; do
            [[ ! -e $control/$kind ]] || cp "$control/$kind" "$database/info/$name.$kind"
        done
        { sed '1a Status: install ok installed' "$control/control" && echo; } >>"$database/status"
    done <<<"$wanted"
    rm -rf "$control"
    printf '%s\n' "$wanted" >"$folder/packages"
}

# make_arm64_package: builds the Debian package in build/packages-arm64.
make_arm64_package() {
    install_missing "${build_packages[@]}" "${package_packages[@]}" "${arm64_packages[@]}"
    date_packages
    umask 022
    cache=${XDG_CACHE_HOME:-$HOME/.cache}/kotoban-arm64
    export KOTOBAN_ARM64_ROOT=$cache/build
    make_arm64_root "$KOTOBAN_ARM64_ROOT" "${arm64_libraries[@]}"
    fresh_build_folder build/arm64 "$(cat "$KOTOBAN_ARM64_ROOT/packages")" "${arm64_packages[@]}"
    say "building for arm64"
    cmake --preset arm64 >/dev/null
    cmake --build --preset arm64
    rm -rf build/packages-arm64
    # cpack runs dpkg-shlibdeps, which reads the libraries and the database of the system that it runs in.
    mkdir -p build/arm64/tools
    printf '#!/bin/sh\nexec "%s/scripts/in_arm64.sh" "%s" /usr/bin/dpkg-shlibdeps "$@"\n' "$PWD" "$KOTOBAN_ARM64_ROOT" \
        >build/arm64/tools/dpkg-shlibdeps
    chmod +x build/arm64/tools/dpkg-shlibdeps
    (cd build/arm64 && PATH="$PWD/tools:$PATH" cpack -B ../packages-arm64)
    rm -rf build/packages-arm64/_CPack_Packages
    sum_packages build/packages-arm64
    ls -l build/packages-arm64
}

# test_arm64_package: checks the package, and uses it in a system that has only what it depends on.
test_arm64_package() {
    local packages=("$PWD"/build/packages-arm64/*.deb) clean=build/arm64-clean name
    install_missing "${package_test_packages[@]}" "${virtual_display_packages[@]}"
    lintian --allow-root --no-cfg --info --fail-on error,warning "${packages[@]}"
    packaging/test/hardening_test.py build/arm64/Kotoban/Kotoban "$cache"
    packaging/test/sbom_test.sh build/arm64 system
    say "testing the package, emulating its processor"
    make_arm64_root "$cache/clean" '?essential' "${packages[@]}"
    rm -rf "$clean"
    cp -a "$cache/clean" "$clean"
    dpkg-deb -x "${packages[0]}" "$clean"
    cmake --build build/arm64 --target text_test store_test records_test
    for name in text store records; do
        QT_QPA_PLATFORM=offscreen scripts/in_arm64.sh "$clean" "build/arm64/tests/${name}_test" --gtest_brief=1
    done
    printf '#!/bin/sh\nexec "%s/scripts/in_arm64.sh" "%s" env HOME=/root kotoban\n' "$PWD" "$PWD/$clean" >build/arm64/tools/kotoban
    chmod +x build/arm64/tools/kotoban
    KOTOBAN_START=$PWD/build/arm64/tools/kotoban scripts/session.sh "$clean/root/.local/share/kotoban" \
        build/arm64/screenshots はじめに.txt
    packaging/test/reproducible.sh "package arm64" build/packages-arm64/kotoban* build/packages-arm64/SHA256SUMS
}
