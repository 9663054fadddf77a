# shellcheck shell=bash disable=SC2034
# Sourced by ./windows: makes what the Windows program is built from and tested on, each part once, in a cache outside
# the repository. A part has its name in the cache only when it is complete. Needs say of setup.sh.

# What it takes to build the program and its libraries from their source packages.
windows_packages=(g++-mingw-w64-x86-64-posix dpkg-dev make tcl googletest nsis)
# What it takes to run it: Wine, some libraries of X11 that Wine uses where they are, and locales.
wine_packages=(wine64 fonts-wine libxcomposite1 libxcursor1 libxi6 libxinerama1 libxrandr2 libxrender1 locales)

cache=${XDG_CACHE_HOME:-$HOME/.cache}/kotoban-windows
compiler=x86_64-w64-mingw32-gcc-posix

# The source package that a package of this machine was built from, as NAME=VERSION: Qt must have the version of the
# tools (moc, rcc) that run here.
source_of() {
    # shellcheck disable=SC2016 # dpkg-query's own variables
    dpkg-query -W -f '${source:Package}=${source:Version}' "$1"
}

# logged FILE COMMAND...: what a command says goes into a file; where the command fails, the end of it is shown.
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

# recipe_of WORD...: stands for all that a library is made with, beside its source.
recipe_of() {
    { printf '%s\n' "$@" "$("$compiler" -dumpfullversion)" && cat cmake/mingw-w64.cmake; } | sha256sum | head -c 8
}

# fetch_source NAME=VERSION FOLDER: unpacks a source package. The machine's own sources of packages serve as sources of
# source packages too, by lists of their own, so that nothing of the system's settings changes.
fetch_source() {
    local package=$1 folder=$2 lists=$cache/apt
    [[ ! -d $folder ]] || return 0
    mkdir -p "$lists/lists/partial"
    # shellcheck disable=SC2016 # apt-get's own variables
    apt-get indextargets --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        sort -u >"$lists/sources.list"
    local options=(-qq -o "Dir::Etc::SourceList=$lists/sources.list" -o Dir::Etc::SourceParts=/dev/null
        -o "Dir::State::Lists=$lists/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
        -o APT::Sandbox::User=root)
    say "fetching the source package $package"
    # Some other source of packages may be out of reach, or signed by a key that only its own settings name.
    apt-get "${options[@]}" update || say "not all sources of packages could be read"
    rm -rf "$folder.new"
    mkdir -p "$folder.new"
    logged "$folder.log" env -C "$folder.new" apt-get "${options[@]}" source "$package"
    mv "$folder.new"/*/ "$folder"
    rm -rf "$folder.new"
}

# What the program has no use for stays out of Qt: the source then needs no library that MinGW-w64 lacks.
qt_options=(-G Ninja -DCMAKE_BUILD_TYPE=MinSizeRel -DBUILD_SHARED_LIBS=OFF -DQT_QMAKE_TARGET_MKSPEC=win32-g++
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no -DFEATURE_pkg_config=OFF)
for feature in concurrent dbus network opengl printsupport sql tabletevent vulkan xml; do
    qt_options+=("-DFEATURE_$feature=OFF")
done
for library in doubleconversion freetype harfbuzz jpeg pcre2 png zlib; do
    qt_options+=("-DFEATURE_system_$library=OFF")
done

# build_qt: leaves the folder of the installed Qt in qt_folder. The whole takes a quarter of an hour on two cores; when
# it is interrupted, the next call goes on where it stopped.
build_qt() {
    local package toolchain=$PWD/cmake/mingw-w64.cmake
    package=$(source_of qt6-base-dev)
    qt_folder=$cache/${package/=/-}-$(recipe_of "${qt_options[@]}")
    [[ ! -d $qt_folder ]] || return 0
    local source=$cache/work/${package/=/-} build=$qt_folder.build stage=$qt_folder.stage
    fetch_source "$package" "$source"
    say "building a static Qt for Windows, once, in $cache; this takes a while"
    # Qt's own configuration reports go to a file, its progress to whoever waits for it.
    logged "$qt_folder.log" cmake -S "$source" -B "$build" "${qt_options[@]}" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DCMAKE_INSTALL_PREFIX="$qt_folder" -DQT_HOST_PATH=/usr \
        -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(dpkg-architecture -q DEB_HOST_MULTIARCH)/cmake"
    cmake --build "$build"
    rm -rf "$stage"
    DESTDIR=$stage cmake --install "$build" >/dev/null
    mv "$stage$qt_folder" "$qt_folder"
    rm -rf "$stage" "$build" "$source"
}

# build_sqlite: leaves its folder in sqlite_folder. The source package holds SQLite's parts; its own makefile joins them to
# the one file that is compiled.
build_sqlite() {
    local package options=(-O2 -DSQLITE_OMIT_LOAD_EXTENSION)
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
    "$compiler" "${options[@]}" -c "$source/sqlite3.c" -o "$stage/sqlite3.o"
    x86_64-w64-mingw32-gcc-ar-posix rcs "$stage/lib/libsqlite3.a" "$stage/sqlite3.o"
    rm "$stage/sqlite3.o"
    mv "$stage" "$sqlite_folder"
    rm -rf "$source"
}

# build_googletest: leaves its folder in googletest_folder. Its package is the source.
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

# Locales, from which Wine takes the code page: Japanese has 932, Hindi has none but UTF-8. And a system folder with
# nothing of the user's in it.
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
        say "making a system folder for Wine, once"
        rm -rf "$cache/wine.new"
        # Wine's services outlive the command; they must not hold the lock.
        logged "$cache/wine.log" env -u DISPLAY KOTOBAN_WINE_FOLDER="$cache/wine.new" scripts/wine wineboot --init 9>&-
        KOTOBAN_WINE_FOLDER=$cache/wine.new scripts/wine --end
        mv "$cache/wine.new" "$cache/wine"
    fi
}

make_windows_libraries() {
    mkdir -p "$cache/work"
    # Two builds at a time would write into each other's folders.
    exec 9>"$cache/lock"
    flock 9
    build_qt
    build_sqlite
    build_googletest
    make_wine_system
    exec 9>&-
    export KOTOBAN_WINDOWS_LIBRARIES="$qt_folder;$sqlite_folder;$googletest_folder"
}
