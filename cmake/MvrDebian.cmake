# SPDX-License-Identifier: MIT
# Run by CPack on what is installed for the packages, before it packs: what Debian asks of every
# package, and what only packages have.
set(here ${CMAKE_CURRENT_LIST_DIR})
set(version ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

# The time of the last commit, so that the same source gives the same packages.
execute_process(COMMAND date -R -u -d @$ENV{SOURCE_DATE_EPOCH}
    OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(changelog ${CPACK_TEMPORARY_DIRECTORY}.changelog)
file(WRITE ${changelog} "${CPACK_PACKAGE_NAME} (${version}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}; changelog.gz says what is new.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    set(root ${CPACK_TEMPORARY_DIRECTORY}/${component})
    if(NOT EXISTS ${root})
        continue()
    endif()
    string(TOUPPER ${component} name)
    set(documents ${root}/usr/share/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME})
    configure_file(${here}/debian/copyright ${documents}/copyright COPYONLY)
    configure_file(${changelog} ${documents}/changelog.Debian COPYONLY)
    configure_file(${here}/../CHANGELOG.md ${documents}/changelog COPYONLY)
    file(GLOB texts ${documents}/changelog* ${root}/usr/share/man/*/*.[1-9])
    execute_process(COMMAND gzip -9nf ${texts} COMMAND_ERROR_IS_FATAL ANY)

    # The system's own folders need no path to be found.
    file(GLOB_RECURSE binaries ${root}/usr/bin/* ${root}/usr/lib/*.so.*)
    foreach(binary IN LISTS binaries)
        if(NOT IS_SYMLINK ${binary})
            file(RPATH_REMOVE FILE ${binary})
        endif()
    endforeach()

    # CPack takes debug information out of what is linked, not out of archives.
    file(GLOB_RECURSE archives ${root}/usr/lib/*.a)
    foreach(archive IN LISTS archives)
        execute_process(COMMAND strip --strip-debug --enable-deterministic-archives ${archive}
            COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
endforeach()
