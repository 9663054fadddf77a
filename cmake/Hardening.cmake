# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# What makes an attack through a foreign file harder, and an executable that says nothing of where it was built. Only for
# optimised builds: the sanitizers of the others see more.
set(for_learners "$<NOT:$<CONFIG:Debug>>")
if(NOT MSVC)
    add_compile_options("$<${for_learners}:-fstack-protector-strong>"
        "$<${for_learners}:-ffile-prefix-map=${PROJECT_BINARY_DIR}=build>"
        "$<${for_learners}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")
    add_compile_definitions("$<${for_learners}:_GLIBCXX_ASSERTIONS>")
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    # Some distributions' compilers define it anyway, with another value.
    add_compile_options("$<${for_learners}:-U_FORTIFY_SOURCE>" "$<${for_learners}:-D_FORTIFY_SOURCE=2>")
    if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
        add_compile_options("$<${for_learners}:-fcf-protection>")
    endif()
    add_link_options("$<${for_learners}:LINKER:-z,relro,-z,now>")
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
if(MINGW)
    add_link_options(-fstack-protector-strong) # by which the compiler adds its library for it
    # Windows 10 is the first that has what Qt needs; an older one says so itself, instead of naming a missing function.
    add_link_options(LINKER:--major-subsystem-version,10,--minor-subsystem-version,0)
    add_link_options(LINKER:--dynamicbase,--high-entropy-va,--nxcompat)
endif()
