# SPDX-License-Identifier: MIT
# Shorter builds for those who work on this project: precompiled headers, and ccache and a faster
# linker where they are.
include(CheckLinkerFlag)
option(MVR_PCH "Precompile the headers of Qt that most sources include" OFF)

find_program(MVR_CCACHE ccache)
if(mvr_top_level AND MVR_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # A precompiled header has a time inside, and names macros that it does not depend on.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${MVR_CCACHE})
endif()

if(mvr_top_level AND MVR_PCH)
    # A program works with a changed shared library as it is: the linker has nothing to do.
    set(CMAKE_LINK_DEPENDS_NO_SHARED ON)
    check_linker_flag(CXX -fuse-ld=lld mvr_has_lld)
    if(mvr_has_lld)
        add_link_options(-fuse-ld=lld)
    endif()
endif()

# Sources include what they use all the same: without MVR_PCH everything has to compile too.
# With a second argument the target takes the precompiled header of that one.
function(mvr_precompile target)
    if(NOT MVR_PCH)
        return()
    endif()
    if(ARGC GREATER 1)
        target_precompile_headers(${target} REUSE_FROM ${ARGV1})
    else()
        target_precompile_headers(${target} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/QtHeaders.h)
    endif()
    # What ccache needs to see through them.
    target_compile_options(${target} PRIVATE
        $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
        "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endfunction()
