# SPDX-License-Identifier: MIT
# Installation: libraries, public headers, and the package that find_package(MvrText) reads.
include(CMakePackageConfigHelpers)

set(mvr_qt_name qt${mvr_qt_major}) # in the names of files, as in those of the libraries
set(mvr_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/MvrText)

if(MVR_BUNDLED_CORE)
    install(TARGETS MvrCore EXPORT MvrCore-${mvr_qt_name}Targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(EXPORT MvrCore-${mvr_qt_name}Targets NAMESPACE MvrCore:: DESTINATION ${mvr_package_dir})
endif()
install(TARGETS MvrText EXPORT MvrText-${mvr_qt_name}Targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT MvrText-${mvr_qt_name}Targets NAMESPACE MvrText:: DESTINATION ${mvr_package_dir})

foreach(folder core text finaldraft bbcode pages)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/mvrtext
        FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE PATTERN "rtf" EXCLUDE PATTERN "xml" EXCLUDE
        PATTERN "html" EXCLUDE PATTERN "document" EXCLUDE PATTERN "file" EXCLUDE)
endforeach()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/MvrTextConfig.cmake.in
    ${PROJECT_BINARY_DIR}/MvrTextConfig.cmake INSTALL_DESTINATION ${mvr_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MvrTextConfigVersion.cmake
    COMPATIBILITY SameMinorVersion) # until 1.0
install(FILES ${PROJECT_BINARY_DIR}/MvrTextConfig.cmake
    ${PROJECT_BINARY_DIR}/MvrTextConfigVersion.cmake DESTINATION ${mvr_package_dir})

# For builds without CMake; PREFIX at installing is that of configuring.
function(mvr_install_pc library requires)
    set(mvr_pc_name ${library}-${mvr_qt_name})
    set(mvr_pc_requires ${requires})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/mvr.pc.in
        ${PROJECT_BINARY_DIR}/${mvr_pc_name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${mvr_pc_name}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
if(MVR_BUNDLED_CORE)
    mvr_install_pc(MvrCore "${mvr_qt}Core ${mvr_qt}Gui ${mvr_qt}Xml")
    mvr_install_pc(MvrText MvrCore-${mvr_qt_name})
endif()
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

if(MVR_BUILD_TOOL)
    install(TARGETS mvrtext RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES ${PROJECT_SOURCE_DIR}/docs/mvrtext.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    set(completion ${PROJECT_BINARY_DIR}/tool/completion)
    install(FILES ${completion}.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
        RENAME mvrtext)
    install(FILES ${completion}.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
        RENAME _mvrtext)
    install(FILES ${completion}.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
        RENAME mvrtext.fish)
endif()
