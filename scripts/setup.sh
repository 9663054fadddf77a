# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2034
# Sourced by ./run, ./test, ./package, ./windows and other scripts: installs missing Debian packages.

# A fresh machine may have no UTF-8 locale. A user's own is kept, since the program takes the language from it.
[[ $(locale charmap 2>/dev/null) == UTF-8 ]] || export LC_ALL=C.UTF-8

# To build the program and to run it on a desktop.
build_packages=(g++ cmake ninja-build qt6-base-dev qt6-tools-dev qt6-l10n-tools libgl1-mesa-dev libsqlite3-dev
    fonts-ipafont-gothic alsa-utils xdg-utils)
# To run it on a virtual X server and to use it there as a user would.
virtual_display_packages=(xvfb openbox xdotool x11-utils imagemagick procps sqlite3)
test_packages=(libgtest-dev libgmock-dev dbus at-spi2-core python3 python3-gi gir1.2-atspi-2.0 appstream
    desktop-file-utils libfaketime python3-jsonschema strace)
# To build the packages, and to check them.
package_packages=(dpkg-dev file gzip python3)
package_test_packages=(lintian python3-jsonschema)
coverage_packages=(gcovr)
# Clang 14, the default, cannot compile the ranges of GCC's standard library.
fuzz_packages=(clang-16 libclang-rt-16-dev)
format_packages=(clang-format-16)
tidy_packages=(clang-tidy-16)
# The benchmark library, and the tools that the program is compared with.
bench_packages=(libbenchmark-dev libxcb1-dev pkgconf python3 nkf uchardet ripgrep valgrind)

say() {
    printf '== %s\n' "$*"
}

# apt_get ARGUMENT...: runs apt-get once no other process holds the locks, as a desktop's updater may for minutes.
# apt-get itself waits only for dpkg's lock, not for those of its lists and its archive.
apt_get() {
    local errors is_told='' deadline=$((SECONDS + 600))
    while true; do
        errors=$("${as_root[@]}" env LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
            apt-get -o DPkg::Lock::Timeout=600 "$@" 2>&1 >/dev/null) && return
        [[ $errors == *"Could not get lock"* && $SECONDS -lt $deadline ]] || break
        [[ -n $is_told ]] || say "waiting for another program to finish installing packages"
        is_told=yes
        sleep 10
    done
    printf '%s\n' "$errors" >&2
    return 1
}

install_missing() {
    local package missing=()
    for package in "$@"; do
        [[ $(dpkg-query -W -f '${Status}' "$package" 2>/dev/null) == *'ok installed' ]] || missing+=("$package")
    done
    if [[ ${#missing[@]} -eq 0 ]]; then
        say "all packages are installed"
        return
    fi
    local as_root=()
    if [[ $(id -u) -ne 0 ]]; then
        if ! command -v sudo >/dev/null; then
            printf 'These Debian packages are missing, and installing them needs root or sudo. Run as root:\n' >&2
            printf '    apt-get update && apt-get install --no-install-recommends %s\n' "${missing[*]}" >&2
            exit 1
        fi
        as_root=(sudo)
    fi
    say "installing ${missing[*]}"
    apt_get update -qq
    apt_get install -y -qq --no-install-recommends "${missing[@]}"
}

# Gives packages the date of the last commit, so that they are reproducible. SOURCE_DATE_EPOCH takes precedence.
date_packages() {
    local moment
    if [[ -z ${SOURCE_DATE_EPOCH:-} ]] && moment=$(git log -1 --format=%ct 2>/dev/null); then
        export SOURCE_DATE_EPOCH=$moment
    fi
}

# Beside packages that are no release: names the linked-in libraries that were not the current ones.
OLD_LIBRARIES=OLD_LIBRARIES

# sum_packages FOLDER: writes the checksums of the packages, so that users can run sha256sum -c SHA256SUMS, and the
# old_libraries that the build was allowed.
sum_packages() {
    (cd "$1" && LC_ALL=C && sha256sum -- kotoban[-_]* >SHA256SUMS)
    rm -f "$1/$OLD_LIBRARIES"
    [[ -z ${old_libraries[*]:-} ]] || printf '%s\n' "${old_libraries[@]}" >"$1/$OLD_LIBRARIES"
}
