# SPDX-License-Identifier: MIT
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)

# What differs between compilers and systems stands here and nowhere else: warnings, hardening and
# where a program looks for its libraries.
if(MSVC)
    set(mvr_warnings /W4 /permissive- /utf-8)
    set(mvr_warnings_are_errors /WX)
else()
    set(mvr_warnings -Wall -Wextra -Wshadow -Wpedantic)
    set(mvr_warnings_are_errors -Werror)
    if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
        # Macros of Qt 5 (QSKIP, qCDebug) leave their last argument out.
        list(APPEND mvr_warnings -Wno-gnu-zero-variadic-macro-arguments)
    endif()
endif()
if(APPLE)
    set(mvr_rpath_origin @loader_path)
else()
    set(mvr_rpath_origin $ORIGIN) # Windows looks beside the program and has no such path
endif()

# What makes a fault harder to use: checked stack frames and buffers, tables that nobody writes into
# once the program runs, and jumps that land only where one may.
set(mvr_hardening)
set(mvr_link_hardening)
if(NOT MVR_SANITIZE AND NOT MSVC)
    foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection)
        string(MAKE_C_IDENTIFIER "mvr_has${flag}" known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            list(APPEND mvr_hardening ${flag})
        endif()
    endforeach()
    # Needs an optimised build; the first takes away what the distribution's compiler may preset.
    list(APPEND mvr_hardening
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=2>)
    check_linker_flag(CXX "-Wl,-z,relro,-z,now" mvr_has_relro)
    if(mvr_has_relro)
        set(mvr_link_hardening "-Wl,-z,relro,-z,now")
    endif()
endif()

# What every target of this project is compiled with: warnings, strict Qt, sanitizers.
function(mvr_configure_target target)
    target_compile_options(${target} PRIVATE ${mvr_warnings})
    if(MVR_WERROR)
        target_compile_options(${target} PRIVATE ${mvr_warnings_are_errors})
    endif()
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
        QT_NO_URL_CAST_FROM_STRING QT_STRICT_ITERATORS)
    target_compile_options(${target} PRIVATE ${mvr_hardening})
    target_link_options(${target} PRIVATE ${mvr_link_hardening})
    if(MVR_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${MVR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${MVR_SANITIZE})
    endif()
endfunction()

# A library's calls of its own functions need no look-up by name: programs start sooner.
check_linker_flag(CXX "-Wl,-Bsymbolic-functions" mvr_has_symbolic_functions)

# A shared library whose headers are included as <folder/Name.h>, in the tree and installed.
function(mvr_configure_library target)
    mvr_configure_target(${target})
    mvr_precompile(${target})
    if(mvr_has_symbolic_functions AND NOT MVR_SANITIZE)
        target_link_options(${target} PRIVATE "-Wl,-Bsymbolic-functions")
    endif()
    set_target_properties(${target} PROPERTIES
        AUTOMOC ON
        OUTPUT_NAME ${target}-qt${mvr_qt_major}
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        INSTALL_RPATH "${mvr_rpath_origin}"
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR})
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/mvrtext>)
endfunction()

# What a test program is to find in its environment.
set(mvr_test_environment
    QT_QPA_PLATFORM=offscreen
    LC_ALL=C.UTF-8
    LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0
    UBSAN_OPTIONS=print_stacktrace=1
    TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/tsan.supp:halt_on_error=1)
