# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Hardening against attacks through untrusted files, and no paths of the build machine in the executable. Only for
# optimised builds: debug builds have sanitizers, which detect more.
set(optimised "$<NOT:$<CONFIG:Debug>>")
if(NOT MSVC)
    add_compile_options("$<${optimised}:-fstack-protector-strong>"
        "$<${optimised}:-ffile-prefix-map=${PROJECT_BINARY_DIR}=build>"
        "$<${optimised}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")
    add_compile_definitions("$<${optimised}:_GLIBCXX_ASSERTIONS>")
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    # Undefined first, because some distributions' compilers define it by default, with another value.
    add_compile_options("$<${optimised}:-U_FORTIFY_SOURCE>" "$<${optimised}:-D_FORTIFY_SOURCE=2>")
    if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
        add_compile_options("$<${optimised}:-fcf-protection>")
    elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
        add_compile_options("$<${optimised}:-mbranch-protection=standard>")
    endif()
    add_link_options("$<${optimised}:LINKER:-z,relro,-z,now>")
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
if(MINGW)
    add_link_options(-fstack-protector-strong) # makes the compiler link the library that this needs
    # Qt needs Windows 10. With this, an older Windows says so itself instead of naming a missing function.
    add_link_options(LINKER:--major-subsystem-version,10,--minor-subsystem-version,0)
    add_link_options(LINKER:--dynamicbase,--high-entropy-va,--nxcompat)
endif()
