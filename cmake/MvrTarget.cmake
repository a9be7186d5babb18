# SPDX-License-Identifier: MIT
# What every target of this project is compiled with: warnings, strict Qt, sanitizers.
function(mvr_configure_target target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow -Wpedantic)
    if(MVR_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
        QT_NO_URL_CAST_FROM_STRING QT_STRICT_ITERATORS)
    if(MVR_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${MVR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${MVR_SANITIZE})
    endif()
endfunction()

# A shared library whose headers are included as <folder/Name.h>, in the tree and installed.
function(mvr_configure_library target)
    mvr_configure_target(${target})
    set_target_properties(${target} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        INSTALL_RPATH "$ORIGIN"
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR})
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/mvrtext>)
endfunction()
