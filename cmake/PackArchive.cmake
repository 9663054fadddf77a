# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Run by cpack once everything that goes into an archive is in CPACK_TEMPORARY_DIRECTORY. cpack's own archives contain
# the name of the user who packs and the times of the files, so they are not reproducible.
set(archive "${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.${CPACK_KOTOBAN_ARCHIVE}")
execute_process(COMMAND /usr/bin/python3 "${CMAKE_CURRENT_LIST_DIR}/../scripts/pack.py"
    "${CPACK_TEMPORARY_DIRECTORY}" "${archive}" COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES "${archive}")
