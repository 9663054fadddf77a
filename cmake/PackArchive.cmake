# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Read by cpack when everything that goes into an archive is in CPACK_TEMPORARY_DIRECTORY. cpack's own archives bear the
# name of who packs and the times of the files, and so differ each time.
set(archive "${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.${CPACK_KOTOBAN_ARCHIVE}")
execute_process(COMMAND python3 "${CMAKE_CURRENT_LIST_DIR}/../scripts/pack.py" "${CPACK_TEMPORARY_DIRECTORY}" "${archive}"
    COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES "${archive}")
