# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# What a package holds and needs (its SBOM), written as the package is made: the executable itself names the shared
# libraries that it needs. Versions come from Debian's package database; a system without one gets no such list.
find_program(PYTHON3 python3)
find_program(DPKG_QUERY dpkg-query)

# install_sbom(<component> <destination> <parts> [INSTALLER <package>] [EXCLUDE_FROM_ALL])
# Parts are the installed packages whose sources are linked into the executable; Qt among them is a static one, beside
# which lies the list of what is in it.
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
        cmake_path(SET attributions NORMALIZE "${Qt6_DIR}/../../../attributions.json")
        string(APPEND options " --qt-parts \"${attributions}\"")
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
