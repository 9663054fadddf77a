#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Creates a clean Debian system in a folder, of this machine's release or another, and runs a command of this repository
# in it, as root. With a mirror and the keyring for its signatures, it can be a distribution derived from Debian.
#
#     in_clean_root.sh [--suite NAME [--mirror URL KEYRING]] FOLDER COMMAND...
#
# In it, the repository is the working folder and read-only. FOLDER keeps the downloaded packages, for the next time,
# and the system as the command left it.
set -euo pipefail
repository=$(realpath "$(dirname "$0")/../..")

# shellcheck source=/dev/null
own_suite=$(source /etc/os-release && printf %s "$VERSION_CODENAME")
suite=$own_suite
if [[ $1 == --suite ]]; then
    suite=$2
    shift 2
fi
other=()
source_options=()
if [[ $1 == --mirror ]]; then
    other=(--mirror "$2" "$3")
    source_options=("--components=main,universe" "--keyring=$3")
    shift 3
fi
mkdir -p "$1"
folder=$(realpath "$1")
shift
base=/mnt/base
root=/mnt/root
fetched=/mnt/fetched

say() {
    printf '== %s\n' "$*"
}

no_clean_root() {
    printf 'Cannot create a clean system here: %s\n' "$1" >&2
    printf '"./package test --on-this-machine" tests the packages on this machine itself.\n' >&2
    exit 1
}

# Mounts and processes are in a separate namespace and end with it.
if [[ ${IN_NAMESPACE:-} != yes ]]; then
    unshare --mount --pid --fork true || no_clean_root "unshare is refused"
    export IN_NAMESPACE=yes
    exec unshare --mount --pid --fork --kill-child "$0" --suite "$suite" "${other[@]}" "$folder" "$@"
fi
umask 022
# debootstrap needs a path without spaces. Only this namespace sees the folder at this one.
mount --bind "$folder" /mnt || no_clean_root "mount is refused"

# By default, the mirror that this machine uses itself.
mirror=${other[1]:-}
# shellcheck disable=SC2016
[[ -n $mirror ]] || mirror=$(apt-get indextargets --format '$(REPO_URI)' "Codename: $own_suite" "Component: main" \
    "Created-By: Packages" | head -n 1)
if [[ ! -d $base ]]; then
    say "creating a clean $suite in $folder"
    rm -rf $base.new
    mkdir -p $fetched
    debootstrap --variant=minbase "${source_options[@]}" --cache-dir=$fetched "$suite" $base.new \
        ${mirror:+"$mirror"} >/mnt/debootstrap.log ||
        no_clean_root "debootstrap failed: $(grep '^[WE]:' /mnt/debootstrap.log)"
    mv $base.new $base
fi
rm -rf $root
cp -a $base $root
mkdir -p $root/repository
mount -t proc proc $root/proc || no_clean_root "mount is refused"
mount -t tmpfs -o mode=1777 tmpfs $root/dev/shm # the one of debootstrap is root's only
mount --bind "$repository" $root/repository
mount -o remount,bind,ro $root/repository
mount --bind $fetched $root/var/cache/apt/archives
cp -L /etc/resolv.conf $root/etc/resolv.conf
[[ ! -e /etc/apt/apt.conf ]] || cp /etc/apt/apt.conf $root/etc/apt/

say "in the clean system: $*"
exec chroot $root env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 HOME=/root \
    ${http_proxy:+"http_proxy=$http_proxy"} ${https_proxy:+"https_proxy=$https_proxy"} \
    sh -c 'cd /repository && exec "$@"' - "$@"
