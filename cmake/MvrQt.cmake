# SPDX-License-Identifier: MIT
# Chooses the toolkit and finds it. Sets mvr_qt to the prefix of its targets, Qt5 or Qt6, and
# mvr_qt_major to 5 or 6. The choice, best first: MVR_QT, the Qt that the enclosing project has
# found already, the Qt that this build directory was configured with (or that Qt6_DIR names),
# Qt 5, Qt 6.
set(MVR_QT "" CACHE STRING "Qt to build with, 5 or 6; empty: the one found, 5 first")
set_property(CACHE MVR_QT PROPERTY STRINGS "" 5 6)

set(mvr_qt_modules Core Gui Xml)

if(MVR_QT)
    set(mvr_qt_major ${MVR_QT})
elseif(TARGET Qt6::Core)
    set(mvr_qt_major 6)
elseif(TARGET Qt5::Core)
    set(mvr_qt_major 5)
elseif(Qt6_DIR AND NOT Qt5_DIR)
    set(mvr_qt_major 6)
else()
    find_package(Qt5 5.15 QUIET COMPONENTS ${mvr_qt_modules})
    if(Qt5_FOUND)
        set(mvr_qt_major 5)
    else()
        set(mvr_qt_major 6)
    endif()
endif()

if(mvr_qt_major EQUAL 6)
    set(mvr_qt_version 6.4)
elseif(mvr_qt_major EQUAL 5)
    set(mvr_qt_version 5.15)
else()
    message(FATAL_ERROR "MVR_QT is \"${MVR_QT}\": it can be 5 or 6")
endif()
set(mvr_qt Qt${mvr_qt_major})
find_package(${mvr_qt} ${mvr_qt_version} REQUIRED COMPONENTS ${mvr_qt_modules})
