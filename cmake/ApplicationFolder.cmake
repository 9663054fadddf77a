# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# The application folder: the executable with everything it needs beside it. The build lays it out in
# ${PROJECT_BINARY_DIR}/Kotoban, the installation at the prefix.
set(KOTOBAN_FOLDER "${PROJECT_BINARY_DIR}/Kotoban")
set(LAY_OUT_COMMAND "${CMAKE_COMMAND}" "-DASSETS=${PROJECT_SOURCE_DIR}/assets")

add_custom_target(application_folder ALL
    COMMAND ${LAY_OUT_COMMAND} "-DFOLDER=${KOTOBAN_FOLDER}" -P "${PROJECT_SOURCE_DIR}/cmake/LayOutFolder.cmake"
    COMMENT "Laying out ${KOTOBAN_FOLDER}"
    VERBATIM)
add_dependencies(application_folder Kotoban)

install(TARGETS Kotoban RUNTIME DESTINATION . COMPONENT portable)
install(CODE "
    set(ASSETS \"${PROJECT_SOURCE_DIR}/assets\")
    set(FOLDER \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
    include(\"${PROJECT_SOURCE_DIR}/cmake/LayOutFolder.cmake\")"
    COMPONENT portable)
