# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# The SBOM of a package: what it contains and needs. Written while the package is built, since the shared libraries are
# read from the executable. Versions come from Debian's package database; systems without one get no SBOM.
find_program(PYTHON3 python3 PATHS /usr/bin NO_DEFAULT_PATH)
find_program(DPKG_QUERY dpkg-query)
# Beside a static Qt of ours: what its libraries contain of others.
cmake_path(SET QT_ATTRIBUTIONS NORMALIZE "${Qt6_DIR}/../../../attributions.json")

# install_sbom(<component> <destination> <parts> [INSTALLER <package>] [EXCLUDE_FROM_ALL])
# <parts> are the installed packages whose sources are linked into the executable. A Qt among them is a static one and
# has the list of its own parts (attributions.json) beside it. <package> is the one
# whose code is in the installer and the uninstaller.
function(install_sbom component destination parts)
    cmake_parse_arguments(ARG "EXCLUDE_FROM_ALL" "INSTALLER" "" ${ARGN})
    if(NOT PYTHON3 OR NOT DPKG_QUERY)
        return()
    endif()
    set(options "")
    foreach(part IN LISTS parts)
        string(APPEND options " --holds \"${part}\"")
    endforeach()
    if(parts)
        string(APPEND options " --qt-parts \"${QT_ATTRIBUTIONS}\"")
    endif()
    if(CMAKE_SYSROOT)
        string(APPEND options " --root \"${CMAKE_SYSROOT}\"")
    endif()
    if(ARG_INSTALLER)
        string(APPEND options " --installer \"${ARG_INSTALLER}\"")
    endif()
    set(excluded "")
    if(ARG_EXCLUDE_FROM_ALL)
        set(excluded EXCLUDE_FROM_ALL)
    endif()
    set(file "${PROJECT_BINARY_DIR}/packaging/kotoban.cdx.json")
    install(CODE "
        file(MAKE_DIRECTORY \"${PROJECT_BINARY_DIR}/packaging\")
        execute_process(COMMAND \"${PYTHON3}\" \"${PROJECT_SOURCE_DIR}/scripts/sbom.py\" write \"${file}\"
            --version \"${PROJECT_VERSION}\" --program \"$<TARGET_FILE:Kotoban>\" ${options}
            COMMAND_ERROR_IS_FATAL ANY)"
        COMPONENT ${component} ${excluded})
    install(FILES "${file}" DESTINATION "${destination}" COMPONENT ${component} ${excluded})
endfunction()
