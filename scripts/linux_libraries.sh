# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2034
# Sourced by ./package: builds the libraries for the program of the Linux archive, each once, in a cache outside the
# repository. Needs say of setup.sh.
# shellcheck source=scripts/static_qt.sh
source scripts/static_qt.sh

static_libraries=(libatspi2.0-dev libffi-dev libfontconfig-dev libfreetype-dev libjpeg62-turbo-dev libpcre2-dev libpng-dev
    zlib1g-dev libxcb1-dev libxcb-icccm4-dev libxcb-image0-dev libxcb-keysyms1-dev
    libxcb-randr0-dev libxcb-render0-dev libxcb-render-util0-dev libxcb-shape0-dev libxcb-shm0-dev libxcb-sync-dev
    libxcb-util-dev libxcb-xfixes0-dev libxcb-xinput-dev libxcb-xkb-dev libxkbcommon-dev)
# The two tools generate code from Wayland's protocols; the libraries for it are built from their source packages.
static_packages=(dpkg-dev meson bison make tcl pkgconf libwayland-bin libwayland-dev qt6-wayland-dev qt6-wayland-dev-tools
    "${static_libraries[@]}")
# Of which the program contains code, beside the compiler's own libraries.
linked_in=(qt6-base-dev qt6-wayland-dev-tools libwayland-dev libsqlite3-dev "${static_libraries[@]}")

cache=${XDG_CACHE_HOME:-$HOME/.cache}/kotoban-linux
compiler=gcc
toolchain=$PWD/cmake/linux-static.cmake
hardening+=" -D_FORTIFY_SOURCE=2 -fcf-protection"

# Qt needs D-Bus for input methods, assistive technology and desktop portals; it loads the library if there is one.
linux_qt_options=(-DCMAKE_BUILD_TYPE=Release -DQT_FORCE_FIND_TOOLS=ON -DFEATURE_xcb=ON -DINPUT_dbus=runtime
    -DFEATURE_accessibility_atspi_bridge=ON -DFEATURE_fontconfig=ON -DFEATURE_system_freetype=ON)
for feature in backtrace directfb eglfs evdev glib gtk3 icu journald kms libinput libudev linuxfb mtdev syslog \
    system_libb2 tslib vnc xcb_sm xcb_xlib xlib zstd; do
    linux_qt_options+=("-DFEATURE_$feature=OFF")
done
for library in jpeg pcre2 png xcb_xinput zlib; do
    linux_qt_options+=("-DFEATURE_system_$library=ON")
done

# build_with_meson PACKAGE=VERSION NAME FOLDER OPTION...: builds the static libraries of a source package in
# FOLDER.stage/usr, from where they are to be moved to FOLDER. They have NAME in place of the path of their source.
build_with_meson() {
    local source=$cache/work/${1/=/-} name=$2 folder=$3
    fetch_source "$1" "$source"
    shift 3
    say "building a static $name, once"
    rm -rf "$folder.stage" "$source/build"
    logged "$folder.log" env "CFLAGS=$hardening -ffile-prefix-map=$source=$name" meson setup "$@" "$source/build" "$source"
    logged "$folder.log" ninja -C "$source/build"
    DESTDIR=$folder.stage meson install -C "$source/build" --quiet
    sed -i "s|^prefix=.*|prefix=$folder|" "$folder.stage"/usr/lib/pkgconfig/*.pc
    rm -rf "$source"
}

meson_options=(--prefix=/usr --libdir=lib --buildtype=release --default-library=static)

# build_xkbcommon: builds a static libxkbcommon, which the distribution does not have, and sets xkbcommon_folder to its
# folder.
build_xkbcommon() {
    local package options=("${meson_options[@]}" -Denable-docs=false -Denable-tools=false -Denable-wayland=false
        -Denable-xkbregistry=false -Dxkb-config-root=/usr/share/X11/xkb -Dx-locale-root=/usr/share/X11/locale)
    package=$(source_of libxkbcommon-dev)
    xkbcommon_folder=$cache/${package/=/-}-$(recipe_of "${options[@]}" "$hardening" "$(source_of libxcb-xkb-dev)")
    [[ ! -d $xkbcommon_folder ]] || return 0
    build_with_meson "$package" libxkbcommon "$xkbcommon_folder" "${options[@]}"
    # The static libxcb-xkb goes beside it, or programs that link both would find the shared one first.
    cp "/usr/lib/$(dpkg-architecture -q DEB_HOST_MULTIARCH)/libxcb-xkb.a" "$xkbcommon_folder.stage/usr/lib/"
    mv "$xkbcommon_folder.stage/usr" "$xkbcommon_folder"
    rm -r "$xkbcommon_folder.stage"
}

# build_wayland: builds static Wayland libraries, which the distribution does not have, so that the program starts where
# there are none, and sets wayland_folder to their folder.
build_wayland() {
    local package options=("${meson_options[@]}" -Dscanner=false -Dtests=false -Ddocumentation=false
        -Ddtd_validation=false -Dicon_directory=/usr/share/icons)
    package=$(source_of libwayland-dev)
    wayland_folder=$cache/${package/=/-}-$(recipe_of "${options[@]}" "$hardening")
    [[ ! -d $wayland_folder ]] || return 0
    build_with_meson "$package" wayland "$wayland_folder" "${options[@]}"
    mv "$wayland_folder.stage/usr" "$wayland_folder"
    rm -r "$wayland_folder.stage"
}

# Qt's Wayland client draws frames around its windows, as GNOME's desktop expects, only where it can use OpenGL, although it
# draws them without. The program has no OpenGL.
wayland_change='s/integrationSupport = clientBufferIntegration() && .*/integrationSupport = true;/'

# add_wayland QT: builds Qt's Wayland client with the Qt in a folder, and installs it there, beside X11's. Needs qt_host of
# build_qt.
add_wayland() {
    local qt=$1 package source
    package=$(source_of qt6-wayland-dev-tools)
    source=$cache/work/${package/=/-}
    fetch_source "$package" "$source"
    sed -i "$wayland_change" "$source/src/client/qwaylanddisplay.cpp"
    grep -q 'integrationSupport = true;' "$source/src/client/qwaylanddisplay.cpp"
    say "building Qt's Wayland client"
    rm -rf "$source/build"
    logged "$qt_folder.log" cmake -S "$source" -B "$source/build" -G Ninja "-DCMAKE_PREFIX_PATH=$qt;$xkbcommon_folder" \
        "-DCMAKE_INSTALL_PREFIX=$qt" "-DCMAKE_TOOLCHAIN_FILE=$toolchain" -DCMAKE_BUILD_TYPE=Release \
        -DFEATURE_wayland_server=OFF "-DCMAKE_CXX_FLAGS=$hardening -ffile-prefix-map=$source=qt6-wayland" \
        "-DCMAKE_C_FLAGS=$hardening -ffile-prefix-map=$source=qt6-wayland" "${qt_host[@]}"
    logged "$qt_folder.log" cmake --build "$source/build"
    cmake --install "$source/build" >/dev/null
    rm -rf "$source"
}

make_linux_libraries() {
    mkdir -p "$cache/work"
    # Concurrent builds would write into each other's folders.
    exec 9>"$cache/lock"
    flock 9
    build_xkbcommon
    build_wayland
    export PKG_CONFIG_PATH=$xkbcommon_folder/lib/pkgconfig:$wayland_folder/lib/pkgconfig
    build_qt Linux "${linux_qt_options[@]}"
    exec 9>&-
    export KOTOBAN_LINUX_LIBRARIES="$qt_folder;$xkbcommon_folder;$wayland_folder"
}
