#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Makes a release of empty packages in a repository of its own, after everything that must prevent it.
#
#     release_test.sh BUILD_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8
source_folder=$(realpath "$(dirname "$0")/../..")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    printf 'release: %s\n' "$*" >&2
    exit 1
}

# expect_no_release TEXT: scripts/release fails, says TEXT and leaves nothing.
expect_no_release() {
    ! scripts/release "$work/release" >"$work/told" 2>&1 || fail "released although $1"
    grep -qF "$1" "$work/told" || fail "does not say: $1"
    [[ ! -e $work/release ]] || fail "left a folder although $1"
}

mkdir -p "$work/repository/"{cmake,packaging,scripts}
cd "$work/repository"
for file in CMakeLists.txt CHANGELOG.md cmake/Addresses.cmake scripts/release scripts/setup.sh \
    packaging/org.kotoban.kotoban.metainfo.xml.in; do
    cp "$source_folder/$file" "$file"
done
git init -q
git config user.name test
git config user.email test@localhost
printf 'build/\n' >.gitignore
git add . && git commit -q -m "first"
expect_no_release "cmake/Addresses.cmake has placeholders"

sed -i 's/example\.org/kotoban.test/' cmake/Addresses.cmake
sed -i 's/^project(Kotoban VERSION [0-9.]*/project(Kotoban VERSION 9.8.7/' CMakeLists.txt
expect_no_release "there are changes that are not committed"
git commit -q -a -m "second"
expect_no_release "CHANGELOG.md does not have 9.8.7"
expect_no_release "the AppStream file does not have 9.8.7"
printf '## [9.8.7] - 2026-12-01\n' >>CHANGELOG.md
printf '<release version="9.8.7" date="2026-12-01"/>\n' >>packaging/org.kotoban.kotoban.metainfo.xml.in
git commit -q -a -m "third"
expect_no_release "there is no build/windows/kotoban-9.8.7-windows-x86_64.zip"

mkdir -p build/packages build/packages-arm64 build/windows
packages=(build/packages/kotoban_9.8.7-1_amd64.deb build/packages-arm64/kotoban_9.8.7-1_arm64.deb
    build/packages/kotoban-9.8.7-linux-x86_64.tar.gz
    build/windows/kotoban-9.8.7-windows-x86_64-setup.exe build/windows/kotoban-9.8.7-windows-x86_64.zip)
touch -d 2000-01-01 "${packages[@]}"
expect_no_release "is older than the commit"
touch "${packages[@]}"
printf 'libpng-dev: old\n' >build/windows/OLD_LIBRARIES
expect_no_release "build/windows has old libraries: libpng-dev: old"
rm build/windows/OLD_LIBRARIES

scripts/release "$work/release" >/dev/null
(cd "$work/release" && sha256sum --quiet -c SHA256SUMS && [[ $(find . -type f | wc -l) -eq 6 ]]) ||
    fail "the release is not complete"
! scripts/release "$work/release" >/dev/null 2>&1 || fail "a release was replaced"
