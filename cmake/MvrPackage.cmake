# SPDX-License-Identifier: MIT
# Debian packages, which scripts/package makes of one build for each Qt. What is installed belongs
# to the components that MvrInstall.cmake names: each becomes one package.
if(NOT mvr_top_level OR NOT MVR_BUILD_TOOL)
    return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libmvrtext) # the source
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The libMvrText developers <root@localhost>") # scripts/package knows better
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/MvrDebian.cmake)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL libraries development tool)
if(MVR_SITE)
    list(APPEND CPACK_COMPONENTS_ALL documentation)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(mvr_same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each has its own
set(mvr_about "libMvrText works in place on Qt's QTextDocument. It keeps notes inside a
document, reads and writes screenplays and RTF, and makes pages of them.")

# NAME PACKAGE SECTION SUMMARY WHAT
function(mvr_package component package section summary what)
    string(TOUPPER ${component} name)
    set(prefix CPACK_DEBIAN_${name})
    set(${prefix}_PACKAGE_NAME ${package} PARENT_SCOPE)
    set(${prefix}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(${prefix}_DESCRIPTION "${summary}\n${mvr_about}\n\n${what}" PARENT_SCOPE)
endfunction()

set(mvr_so libmvrtext${PROJECT_VERSION_MAJOR})
mvr_package(libraries ${mvr_so} libs "Rich-text documents for writers, libraries"
    "This package holds the shared libraries, for Qt 5 and for Qt 6.")
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SHLIBDEPS ON)

mvr_package(development libmvrtext-dev libdevel "Rich-text documents for writers, development files"
    "This package holds the headers and what CMake and pkg-config need to find the
libraries.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${mvr_so} ${mvr_same_version}, qt6-base-dev (>= 6.4) | qtbase5-dev (>= 5.15)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libmvrtext-doc)

mvr_package(tool mvrtext text "Converts screenplays and RTF, with their notes"
    "This package holds the command-line program mvrtext: it converts, counts,
lists notes and composes pages.")
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${mvr_so} ${mvr_same_version}")
set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS fonts-courier-prime)

mvr_package(documentation libmvrtext-doc doc "Rich-text documents for writers, documentation"
    "This package holds the pages about the libraries and their classes.")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)

include(CPack)
