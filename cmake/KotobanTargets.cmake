# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# How this project's own targets are compiled and tested. The options are on a separate target, so that they apply to
# our code only.
add_library(kotoban_options INTERFACE)
target_include_directories(kotoban_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_definitions(kotoban_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS
    QT_USE_QSTRINGBUILDER)
if(MSVC)
    target_compile_options(kotoban_options INTERFACE /utf-8 /W4 /permissive- $<$<BOOL:${KOTOBAN_WERROR}>:/WX>)
else()
    target_compile_options(kotoban_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
        $<$<BOOL:${KOTOBAN_WERROR}>:-Werror>)
endif()

if(KOTOBAN_SANITIZE AND NOT MSVC)
    add_compile_options("-fsanitize=${KOTOBAN_SANITIZE}" -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options("-fsanitize=${KOTOBAN_SANITIZE}")
endif()
if(KOTOBAN_CLANG_TIDY)
    find_program(CLANG_TIDY NAMES clang-tidy-16 clang-tidy REQUIRED)
    set(CMAKE_CXX_CLANG_TIDY "${CLANG_TIDY}" --quiet)
    set(KOTOBAN_PRECOMPILE OFF) # clang-tidy cannot read what GCC has precompiled
endif()
if(KOTOBAN_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()
if(KOTOBAN_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Precompiled headers, which half the time that a build takes. Libraries of windows use more of Qt than the others.
if(KOTOBAN_PRECOMPILE)
    function(kotoban_precompiled name)
        file(GENERATE OUTPUT "${PROJECT_BINARY_DIR}/${name}.cpp" CONTENT "")
        add_library(${name} OBJECT "${PROJECT_BINARY_DIR}/${name}.cpp")
        target_link_libraries(${name} PRIVATE kotoban_options Qt6::Core ${ARGN})
    endfunction()
    kotoban_precompiled(precompiled_logic)
    target_precompile_headers(precompiled_logic PRIVATE <QtCore>)
    kotoban_precompiled(precompiled_windows Qt6::Widgets)
    target_precompile_headers(precompiled_windows PRIVATE <QtWidgets>)
endif()

# Optimised builds leave out functions that nothing calls; not on Windows, where this is tested too little.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    add_compile_options("$<$<CONFIG:Release>:-ffunction-sections;-fdata-sections>")
    add_link_options("$<$<CONFIG:Release>:LINKER:--gc-sections>")
endif()

# kotoban_library(<name> [FAST] SOURCES <file>... [LINK <target>...])
# The static library of one folder. LINK names the targets that it uses, whose dependencies are linked as well. Those
# that link Qt6::Widgets have signals. FAST is for libraries whose time bench/compare measures: the others are optimised
# for size, which takes two thirds of the room and no time that anybody could notice.
function(kotoban_library name)
    cmake_parse_arguments(ARG "FAST" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE kotoban_options)
    if(NOT ARG_FAST AND NOT MSVC)
        target_compile_options(${name} PRIVATE "$<$<CONFIG:Release>:-Os>")
    endif()
    set(kind logic)
    if(Qt6::Widgets IN_LIST ARG_LINK)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        set(kind windows)
    endif()
    if(KOTOBAN_PRECOMPILE)
        target_precompile_headers(${name} REUSE_FROM precompiled_${kind})
    endif()
endfunction()

# The Qt platform that the tests run on. The offscreen one does not find the fonts of Windows.
set(KOTOBAN_TEST_PLATFORM offscreen)
if(WIN32)
    set(KOTOBAN_TEST_PLATFORM windows)
endif()

# kotoban_test(<name> LABEL <folder> SOURCES <file>... LINK <target>...)
# A GoogleTest program, run on the platform of the tests.
function(kotoban_test name)
    cmake_parse_arguments(ARG "" "LABEL" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${name} PRIVATE kotoban_options test_support ${ARG_LINK})
    if(KOTOBAN_PRECOMPILE)
        target_precompile_headers(${name} REUSE_FROM test_support)
    endif()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABEL}" ENVIRONMENT "QT_QPA_PLATFORM=${KOTOBAN_TEST_PLATFORM}")
endfunction()
