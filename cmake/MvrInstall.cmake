# SPDX-License-Identifier: MIT
# Installation: libraries, public headers, and the package that find_package(MvrText) reads. The
# components are those that MvrPackage.cmake makes packages of.
include(CMakePackageConfigHelpers)

set(mvr_qt_name qt${mvr_qt_major}) # in the names of files, as in those of the libraries
set(mvr_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/MvrText)

function(mvr_install_library target)
    set(name ${target}-${mvr_qt_name})
    install(TARGETS ${target} EXPORT ${name}Targets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT libraries
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libraries NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
    install(EXPORT ${name}Targets NAMESPACE ${target}:: DESTINATION ${mvr_package_dir}
        COMPONENT development)
endfunction()
if(MVR_BUNDLED_CORE)
    mvr_install_library(MvrCore)
endif()
mvr_install_library(MvrText)
if(TARGET MvrWidgets)
    mvr_install_library(MvrWidgets)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/widgets
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/mvrtext COMPONENT development
        FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)
endif()

foreach(folder core text finaldraft bbcode pages)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/mvrtext COMPONENT development
        FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE PATTERN "rtf" EXCLUDE PATTERN "xml" EXCLUDE
        PATTERN "html" EXCLUDE PATTERN "document" EXCLUDE PATTERN "file" EXCLUDE)
endforeach()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/MvrTextConfig.cmake.in
    ${PROJECT_BINARY_DIR}/MvrTextConfig.cmake INSTALL_DESTINATION ${mvr_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MvrTextConfigVersion.cmake
    COMPATIBILITY SameMinorVersion) # until 1.0
install(FILES ${PROJECT_BINARY_DIR}/MvrTextConfig.cmake
    ${PROJECT_BINARY_DIR}/MvrTextConfigVersion.cmake DESTINATION ${mvr_package_dir}
    COMPONENT development)

# For builds without CMake; found wherever the prefix is.
file(RELATIVE_PATH mvr_pc_to_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" mvr_pc_to_prefix ${mvr_pc_to_prefix})
function(mvr_install_pc library requires)
    set(mvr_pc_name ${library}-${mvr_qt_name})
    set(mvr_pc_requires ${requires})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/mvr.pc.in
        ${PROJECT_BINARY_DIR}/${mvr_pc_name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${mvr_pc_name}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()
if(MVR_BUNDLED_CORE)
    mvr_install_pc(MvrCore "${mvr_qt}Core ${mvr_qt}Gui ${mvr_qt}Xml")
    mvr_install_pc(MvrText MvrCore-${mvr_qt_name})
    if(TARGET MvrWidgets)
        mvr_install_pc(MvrWidgets "MvrText-${mvr_qt_name} ${mvr_qt}Widgets")
    endif()
endif()
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT licence)
if(MVR_SITE)
    install(DIRECTORY ${MVR_SITE}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libmvrtext-doc/html
        COMPONENT documentation)
endif()

if(MVR_BUILD_TOOL)
    install(TARGETS mvrtext RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
    install(TARGETS mvrpdf LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/mvrtext COMPONENT tool)
    install(FILES ${PROJECT_SOURCE_DIR}/docs/mvrtext.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
    # Where each shell looks for the script that completes the words of a program.
    foreach(place bash:bash-completion/completions:mvrtext zsh:zsh/site-functions:_mvrtext
             fish:fish/vendor_completions.d:mvrtext.fish)
        string(REPLACE ":" ";" place ${place})
        list(POP_FRONT place shell folder name)
        install(FILES ${PROJECT_BINARY_DIR}/tool/completion.${shell}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder} RENAME ${name} COMPONENT tool)
    endforeach()
endif()
