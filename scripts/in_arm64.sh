#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Runs a command in a system for arm64 that scripts/arm64.sh has unpacked, emulating its processor. In it, /tmp and the
# repository are this machine's.
#
#     in_arm64.sh FOLDER COMMAND...
#
# Needs no privileges: the emulator is registered in a namespace, which ends with the command. Before Linux 6.7, as in
# Debian 12, a namespace has no emulators of its own; there the machine must have this one, which the package
# qemu-user-static registers for systemd.
set -euo pipefail

repository=$(realpath "$(dirname "$0")/..")
root=$(realpath "$1")
shift
if [[ ${IN_NAMESPACE:-} != yes ]]; then
    IN_NAMESPACE=yes exec unshare --user --map-root-user --mount "$0" "$root" "$@"
fi
unset IN_NAMESPACE
mkdir -p "$root"/{dev,proc,tmp} "$root$repository"
for folder in /dev /proc /tmp "$repository"; do
    mount --rbind "$folder" "$root$folder"
done
emulators=$root/proc/sys/fs/binfmt_misc
if mount -t binfmt_misc binfmt_misc "$emulators" 2>/dev/null; then
    # The kernel opens the emulator now (F), and hands it executables that begin like this; see binfmt-misc.rst of the
    # kernel.
    header='\x7fELF\x02\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\xb7\x00'
    mask='\xff\xff\xff\xff\xff\xff\xff\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff'
    printf %s ":arm64:M::$header:$mask:/usr/bin/qemu-aarch64-static:F" >"$emulators/register"
elif [[ ! -e $emulators/qemu-aarch64 ]]; then
    printf 'No emulator for arm64 can be registered here: it takes Linux 6.7, or on the machine, as root:\n' >&2
    printf '    systemctl restart systemd-binfmt\n' >&2
    exit 1
fi
exec chroot "$root" /usr/bin/env -C "$PWD" "$@"
