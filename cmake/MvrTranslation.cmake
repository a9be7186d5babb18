# SPDX-License-Identifier: MIT
# mvr_add_translation(TARGET NAME [FOLDER]): gives the program TARGET the German texts of
# translations/NAME_de.ts, in this folder or another one, as the resource
# :/translations/NAME_de.qm. Without Qt's translation tools it speaks English.
find_program(MVR_LRELEASE NAMES lrelease lrelease-qt5 lrelease6
    HINTS /usr/lib/qt5/bin /usr/lib/qt6/bin)

function(mvr_add_translation target name)
    if(NOT MVR_LRELEASE)
        message(STATUS "lrelease is missing: ${target} speaks English only")
        return()
    endif()
    set(folder ${CMAKE_CURRENT_SOURCE_DIR} ${ARGN})
    list(GET folder -1 folder)
    set(texts ${folder}/translations/${name}_de.ts)
    set(translation ${CMAKE_CURRENT_BINARY_DIR}/${name}_de.qm)
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${name}.qrc)
    add_custom_command(OUTPUT ${translation}
        COMMAND ${MVR_LRELEASE} -silent ${texts} -qm ${translation}
        DEPENDS ${texts} VERBATIM)
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/translations.qrc.in ${resource} @ONLY)
    set_source_files_properties(${resource} PROPERTIES OBJECT_DEPENDS ${translation})
    target_sources(${target} PRIVATE ${resource} ${translation})
    set_target_properties(${target} PROPERTIES AUTORCC ON)
endfunction()
