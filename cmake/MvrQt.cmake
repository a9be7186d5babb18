# SPDX-License-Identifier: MIT
# Chooses the toolkit and finds it. Sets mvr_qt to the prefix of its targets, Qt5 or Qt6, and
# mvr_qt_major to 5 or 6. The choice, best first: MVR_QT, the Qt that the enclosing project has
# found already, the Qt that this build directory was configured with (or that Qt6_DIR names),
# Qt 5, Qt 6. A host that says nothing gets Qt 5, because what takes a QRegExp exists there only;
# the presets of this project ask for Qt 6 first.
set(MVR_QT "" CACHE STRING "Qt to build with: 5, 6, or both, of which the first that is there is \
taken (6;5); empty: the Qt that the project has found, else 5, else 6")
set_property(CACHE MVR_QT PROPERTY STRINGS "" 5 6 "6;5" "5;6")

set(mvr_qt_modules Core Gui Xml)
set(mvr_qt_version_5 5.15)
set(mvr_qt_version_6 6.4)

if(MVR_QT)
    set(mvr_qt_choice ${MVR_QT})
elseif(TARGET Qt6::Core)
    set(mvr_qt_choice 6)
elseif(TARGET Qt5::Core)
    set(mvr_qt_choice 5)
elseif(Qt6_DIR AND NOT Qt5_DIR)
    set(mvr_qt_choice 6)
else()
    set(mvr_qt_choice 5 6)
endif()

# All but the last may be missing.
list(POP_BACK mvr_qt_choice mvr_qt_major)
foreach(major IN LISTS mvr_qt_choice)
    find_package(Qt${major} ${mvr_qt_version_${major}} QUIET COMPONENTS ${mvr_qt_modules})
    if(Qt${major}_FOUND)
        set(mvr_qt_major ${major})
        break()
    endif()
endforeach()

if(NOT DEFINED mvr_qt_version_${mvr_qt_major})
    message(FATAL_ERROR "MVR_QT is \"${MVR_QT}\": it can be 5, 6 or both of them")
endif()
set(mvr_qt Qt${mvr_qt_major})
find_package(${mvr_qt} ${mvr_qt_version_${mvr_qt_major}} REQUIRED COMPONENTS ${mvr_qt_modules})
