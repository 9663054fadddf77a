# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Builds for this Linux with the libraries linked in that not every desktop has, each of them from the distribution's own
# static one. What stays outside is what every X11 desktop has: libc, libxcb, fontconfig and FreeType.
execute_process(COMMAND cc -print-multiarch OUTPUT_VARIABLE multiarch OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
set(libraries "/usr/lib/${multiarch}")

foreach(part ICCCM IMAGE KEYSYMS RANDR RENDER SHAPE SHM SYNC UTIL XFIXES XINPUT XKB)
    string(TOLOWER "${part}" name)
    set(XCB_${part}_LIBRARY "${libraries}/libxcb-${name}.a" CACHE FILEPATH "")
endforeach()
set(XCB_RENDERUTIL_LIBRARY "${libraries}/libxcb-render-util.a" CACHE FILEPATH "")
set(JPEG_LIBRARY_RELEASE "${libraries}/libjpeg.a" CACHE FILEPATH "")
set(PCRE2_LIBRARY_RELEASE "${libraries}/libpcre2-16.a" CACHE FILEPATH "")
set(PNG_LIBRARY_RELEASE "${libraries}/libpng16.a" CACHE FILEPATH "")
set(SQLite3_LIBRARY "${libraries}/libsqlite3.a" CACHE FILEPATH "")
set(ZLIB_LIBRARY_RELEASE "${libraries}/libz.a" CACHE FILEPATH "")

# libxcb-image needs it, which nobody tells CMake; at the end of the command line it is found.
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT "${libraries}/libxcb-util.a")

# None of this is seen from outside: a library of the system that uses one of these as well takes the system's.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static-libstdc++ -static-libgcc -Wl,--exclude-libs,ALL -Wl,--gc-sections")
