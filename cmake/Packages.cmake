# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# The packages. The component "portable", which includes the application folder, is the archive: a folder that runs from
# any writable place. On Linux its program contains a static Qt, so that it does not depend on the machine's Qt. The
# component "system" is the Debian package: the program for all users, and a launcher that creates an application folder
# for each.
include(Addresses)
set(packaging "${PROJECT_SOURCE_DIR}/packaging")
set(made "${PROJECT_BINARY_DIR}/packaging")
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION . COMPONENT portable)
include(Sbom)

if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    # The current time, or SOURCE_DATE_EPOCH if that is set.
    string(TIMESTAMP RELEASE_MOMENT "%a, %d %b %Y %H:%M:%S +0000" UTC)

    # install_system(<file>... DESTINATION <folder> [RENAME <name>])
    function(install_system)
        install(${ARGN} COMPONENT system EXCLUDE_FROM_ALL)
    endfunction()

    # Without name and time in the compressed file, so that packages are reproducible.
    function(install_compressed file destination name)
        execute_process(COMMAND gzip -9nc "${file}" OUTPUT_FILE "${made}/${name}.gz" COMMAND_ERROR_IS_FATAL ANY)
        install_system(FILES "${made}/${name}.gz" DESTINATION "${destination}")
    endfunction()

    # The archive's install.sh creates its menu entry from the package's, less the lines with paths.
    file(READ "${packaging}/org.kotoban.kotoban.desktop" ENTRY)
    string(REGEX REPLACE "\n(Exec|TryExec|Icon)=[^\n]*" "" ENTRY "${ENTRY}")
    configure_file("${packaging}/install.sh.in" "${made}/install.sh" @ONLY)
    install(PROGRAMS "${made}/install.sh" DESTINATION . COMPONENT portable)
    install(FILES "${PROJECT_SOURCE_DIR}/assets/icon/kotoban-256.png" DESTINATION . RENAME kotoban.png
        COMPONENT portable)
    install(FILES "${packaging}/お読みください.txt" DESTINATION . COMPONENT portable)

    install_system(TARGETS Kotoban RUNTIME DESTINATION lib/kotoban)
    install_system(PROGRAMS "${packaging}/kotoban.sh" DESTINATION bin RENAME kotoban)

    # What the launcher fills a user's folder with: an application folder without its executable.
    install_system(CODE "
        file(REMOVE_RECURSE \"${made}/folder\")
        set(ASSETS \"${PROJECT_SOURCE_DIR}/assets\")
        set(FOLDER \"${made}/folder\")
        include(\"${PROJECT_SOURCE_DIR}/cmake/LayOutFolder.cmake\")")
    install_system(DIRECTORY "${made}/folder/" DESTINATION share/kotoban)

    install_system(FILES "${packaging}/org.kotoban.kotoban.desktop" DESTINATION share/applications)
    configure_file("${packaging}/org.kotoban.kotoban.metainfo.xml.in" "${made}/org.kotoban.kotoban.metainfo.xml" @ONLY)
    install_system(FILES "${made}/org.kotoban.kotoban.metainfo.xml" DESTINATION share/metainfo)
    set(icons "${PROJECT_SOURCE_DIR}/assets/icon")
    install_system(FILES "${icons}/kotoban.svg" DESTINATION share/icons/hicolor/scalable/apps)
    foreach(size 16 20 24 32 40 48 64 128 256)
        install_system(FILES "${icons}/kotoban-${size}.png" DESTINATION "share/icons/hicolor/${size}x${size}/apps"
            RENAME kotoban.png)
    endforeach()

    configure_file("${packaging}/copyright.in" "${made}/copyright" @ONLY)
    install_system(FILES "${made}/copyright" DESTINATION share/doc/kotoban)
    install_sbom(system share/doc/kotoban "" EXCLUDE_FROM_ALL)
    install_system(FILES "${packaging}/lintian-overrides" DESTINATION share/lintian/overrides RENAME kotoban)
    configure_file("${packaging}/changelog.in" "${made}/changelog" @ONLY)
    install_compressed("${made}/changelog" share/doc/kotoban changelog.Debian)
    install_compressed("${packaging}/kotoban.1" share/man/man1 kotoban.1)
    file(MAKE_DIRECTORY "${made}/ja")
    install_compressed("${packaging}/kotoban.ja.1" share/man/ja/man1 ja/kotoban.1)
endif()

if(WIN32)
    install(FILES "${packaging}/windows/お読みください.txt" DESTINATION . COMPONENT portable)
endif()
if(WIN32 AND NOT CMAKE_HOST_WIN32)
    # Signs the file that goes into the package, after it has been stripped.
    install(CODE "
        execute_process(COMMAND \"${PROJECT_SOURCE_DIR}/scripts/sign.sh\"
            \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Kotoban.exe\" COMMAND_ERROR_IS_FATAL ANY)"
        COMPONENT portable)
endif()
# The libraries inside the executable come from this machine's packages, and so do their licences.
set(parts)
set(installer)
if(WIN32 AND CMAKE_CROSSCOMPILING)
    set(parts qt6-base-dev libsqlite3-dev mingw-w64-common g++-mingw-w64-x86-64-posix)
    set(installer nsis)
    set(PROGRAM Kotoban.exe)
    set(ARCHIVE ".zip，インストーラー")
    set(BUILD_COMMAND ./windows)
    set(line_ends CRLF)
elseif(KOTOBAN_STATIC)
    string(REGEX MATCH "^[0-9]+" gcc "${CMAKE_CXX_COMPILER_VERSION}")
    set(parts qt6-base-dev qt6-wayland-dev-tools libsqlite3-dev "libstdc++-${gcc}-dev" libffi-dev libjpeg62-turbo-dev
        libpcre2-dev libpng-dev libwayland-dev libxcb1-dev libxcb-icccm4-dev libxcb-image0-dev libxcb-keysyms1-dev
        libxcb-render-util0-dev libxcb-util-dev libxkbcommon-dev zlib1g-dev)
    set(PROGRAM Kotoban)
    set(ARCHIVE .tar.gz)
    set(BUILD_COMMAND ./package)
    set(line_ends UNIX)
endif()
install_sbom(portable licences "${parts}" INSTALLER ${installer})
if(parts)
    foreach(part IN LISTS parts installer)
        install(FILES "/usr/share/doc/${part}/copyright" DESTINATION licences RENAME "${part}.txt" COMPONENT portable)
    endforeach()
    execute_process(COMMAND dpkg-query -W -f "https://snapshot.debian.org/package/\${source:Package}/\${source:Version}/\n"
        ${parts} ${installer} OUTPUT_VARIABLE PART_SOURCES COMMAND_ERROR_IS_FATAL ANY)
    # The copies in Qt's source that were replaced.
    file(READ "${QT_ATTRIBUTIONS}" attributions)
    string(REGEX MATCHALL "\"package\": \"[^\"]+" replaced "${attributions}")
    foreach(part IN LISTS replaced)
        string(REGEX REPLACE ".*\"(.+)=(.+)" "https://snapshot.debian.org/package/\\1/\\2/" address "${part}")
        string(APPEND PART_SOURCES "${address}\n")
    endforeach()
    configure_file("${packaging}/SOURCES.txt.in" "${made}/SOURCES.txt" @ONLY NEWLINE_STYLE ${line_ends})
    install(FILES "${made}/SOURCES.txt" DESTINATION licences COMPONENT portable)
    foreach(licence GPL-2 GPL-3 LGPL-3)
        install(FILES "/usr/share/common-licenses/${licence}" DESTINATION licences RENAME "${licence}.txt"
            COMPONENT portable)
    endforeach()
endif()

set(CPACK_PACKAGE_NAME kotoban)
set(CPACK_PACKAGE_VENDOR "The Kotoban developers")
set(CPACK_PACKAGE_CONTACT "${PACKAGE_CONTACT}")
set(CPACK_PACKAGE_HOMEPAGE_URL "${PACKAGE_HOMEPAGE}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "study by filling in the blanks of text files")
set(CPACK_PACKAGE_DESCRIPTION "\
Kotoban opens a plain text file in which every word to learn is written in
square brackets, and hides those words behind boxes. The learner recalls a
word and uncovers it with Enter or the mouse, while a clock runs. Each session
is recorded in the learner's own database, from which the program shows the
week's study and writes reports. The user interface is Japanese.

瞬記帳：自分で書いた文章の穴埋めで覚えるための学習ソフトです。")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/cmake/PackageOfGenerator.cmake")

if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    set(CPACK_GENERATOR DEB)
    if(KOTOBAN_STATIC)
        set(CPACK_GENERATOR External)
    endif()
    set(CPACK_KOTOBAN_ARCHIVE tar.gz)
    set(CPACK_SYSTEM_NAME "linux-${CMAKE_SYSTEM_PROCESSOR}")
else()
    set(CPACK_GENERATOR External)
    set(CPACK_KOTOBAN_ARCHIVE zip)
    set(CPACK_SYSTEM_NAME "windows-${CMAKE_SYSTEM_PROCESSOR}")
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
if(CMAKE_CROSSCOMPILING AND CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION education)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The dependencies on libraries are read from the program itself. Qt loads the one that shows its windows, which its own
# package only recommends.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, fonts-ipafont-gothic | fonts-japanese-gothic, xdg-utils")
# For Wayland without Xwayland, for sounds, and for the window in which the launcher says why it cannot start the program.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, pulseaudio-utils | pipewire-bin | alsa-utils, zenity | kdialog")
# For the voice, and editors that keep the encoding of study files.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "speech-dispatcher | espeak-ng, gedit | kate | kwrite | l3afpad")
include(CPack)
