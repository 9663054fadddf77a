# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Run by cpack once for each kind of package.
if(CPACK_GENERATOR STREQUAL "DEB")
    string(REPLACE ";ALL;" ";system;" CPACK_INSTALL_CMAKE_PROJECTS "${CPACK_INSTALL_CMAKE_PROJECTS}")
    set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
else()
    # The folder has the version in its name, so that it is unpacked beside an older one, never over a user's files.
    string(REPLACE ";ALL;/" ";portable;/Kotoban-${CPACK_PACKAGE_VERSION}" CPACK_INSTALL_CMAKE_PROJECTS
        "${CPACK_INSTALL_CMAKE_PROJECTS}")
    set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
    set(CPACK_EXTERNAL_ENABLE_STAGING ON)
    set(CPACK_EXTERNAL_PACKAGE_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/PackArchive.cmake")
endif()
