# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Builds for this Linux, statically linking the libraries that not every desktop has, each in the distribution's static
# version. libc, libxcb, fontconfig and FreeType, which every X11 desktop has, stay shared.
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

# libxcb-image needs the first and libwayland-client the second, but CMake does not know that; the linker finds them at
# the end of the command line.
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT "${libraries}/libxcb-util.a ${libraries}/libffi.a")

# None of these is exported, so that a system library that also uses one of them gets the system's.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static-libstdc++ -static-libgcc -Wl,--exclude-libs,ALL -Wl,--gc-sections")
