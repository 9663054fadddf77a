# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2034
# Sourced by ./windows: builds what the Windows program is linked with and tested on, each part once, in a cache outside
# the repository. A folder gets its final name there only when it is complete. Needs say of setup.sh.
# shellcheck source=scripts/static_qt.sh
source scripts/static_qt.sh

# To build the program, and its libraries from their source packages.
windows_packages=(python3 g++-mingw-w64-x86-64-posix dpkg-dev make tcl googletest libpng-dev nsis)
# Of which the program and the installer contain code.
linked_in=(qt6-base-dev libsqlite3-dev libpng-dev mingw-w64-common g++-mingw-w64-x86-64-posix nsis)
# To sign the program, and to test signing.
signing_packages=(osslsigncode openssl)
# To run it: Wine, some X11 libraries that Wine uses if they are installed, and locales.
wine_packages=(wine64 fonts-wine libxcomposite1 libxcursor1 libxi6 libxinerama1 libxrandr2 libxrender1 locales)

cache=${XDG_CACHE_HOME:-$HOME/.cache}/kotoban-windows
compiler=x86_64-w64-mingw32-gcc-posix
toolchain=$PWD/cmake/mingw-w64.cmake

# Further options of Qt for Windows, so that it needs no library that MinGW-w64 lacks. Qt would use FreeType only on
# request on the command line; Windows renders the text.
windows_qt_options=(-DCMAKE_BUILD_TYPE=MinSizeRel -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DFEATURE_pkg_config=OFF
    -DFEATURE_dbus=OFF -DFEATURE_freetype=OFF)
for library in jpeg pcre2 png zlib; do
    windows_qt_options+=("-DFEATURE_system_$library=OFF")
done

# build_sqlite: builds SQLite and sets sqlite_folder to its folder. The source package contains separate source files,
# which its makefile joins into the one file that is compiled.
build_sqlite() {
    local package options=(-O2 -fstack-protector-strong -DSQLITE_OMIT_LOAD_EXTENSION)
    package=$(source_of libsqlite3-dev)
    sqlite_folder=$cache/${package/=/-}-$(recipe_of "${options[@]}")
    [[ ! -d $sqlite_folder ]] || return 0
    local source=$cache/work/${package/=/-} stage=$sqlite_folder.stage
    fetch_source "$package" "$source"
    say "building SQLite for Windows, once"
    rm -rf "$stage"
    mkdir -p "$stage"/{include,lib}
    logged "$sqlite_folder.log" env -C "$source" sh -c './configure --disable-tcl --disable-readline && make sqlite3.c'
    cp "$source/sqlite3.h" "$stage/include/"
    "$compiler" "${options[@]}" "-ffile-prefix-map=$source=sqlite3" -c "$source/sqlite3.c" -o "$stage/sqlite3.o"
    x86_64-w64-mingw32-gcc-ar-posix rcs "$stage/lib/libsqlite3.a" "$stage/sqlite3.o"
    rm "$stage/sqlite3.o"
    mv "$stage" "$sqlite_folder"
    rm -rf "$source"
}

# build_googletest: builds GoogleTest, whose package contains the source, and sets googletest_folder to its folder.
build_googletest() {
    local package stage build
    package=$(source_of googletest)
    googletest_folder=$cache/${package/=/-}-$(recipe_of Release)
    [[ ! -d $googletest_folder ]] || return 0
    stage=$googletest_folder.stage build=$googletest_folder.build
    say "building GoogleTest for Windows, once"
    cmake -S /usr/src/googletest -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64.cmake" -DCMAKE_INSTALL_PREFIX="$googletest_folder" >/dev/null
    cmake --build "$build" >/dev/null
    rm -rf "$stage"
    DESTDIR=$stage cmake --install "$build" >/dev/null
    mv "$stage$googletest_folder" "$googletest_folder"
    rm -rf "$stage" "$build"
}

# make_wine_system: creates the locales from which Wine takes the code page (Japanese has 932, Hindi only UTF-8), and a
# Wine prefix without any of the user's files or settings.
make_wine_system() {
    local name
    mkdir -p "$cache/locale"
    for name in ja_JP hi_IN; do
        [[ ! -d $cache/locale/$name.UTF-8 ]] || continue
        rm -rf "$cache/locale.new"
        localedef -i "$name" -f UTF-8 "$cache/locale.new"
        mv "$cache/locale.new" "$cache/locale/$name.UTF-8"
    done
    if [[ ! -d $cache/wine ]]; then
        say "creating a Wine prefix, once"
        rm -rf "$cache/wine.new"
        # Wine's services outlive the command; they must not hold the lock.
        logged "$cache/wine.log" env -u DISPLAY KOTOBAN_WINE_FOLDER="$cache/wine.new" scripts/wine wineboot --init 9>&-
        KOTOBAN_WINE_FOLDER=$cache/wine.new scripts/wine --end
        mv "$cache/wine.new" "$cache/wine"
    fi
}

make_windows_libraries() {
    mkdir -p "$cache/work"
    # Concurrent builds would write into each other's folders.
    exec 9>"$cache/lock"
    flock 9
    build_qt Windows "${windows_qt_options[@]}"
    check_replaced_libpng "$qt_folder/attributions.json"
    build_sqlite
    build_googletest
    make_wine_system
    exec 9>&-
    export KOTOBAN_WINDOWS_LIBRARIES="$qt_folder;$sqlite_folder;$googletest_folder"
}
