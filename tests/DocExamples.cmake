# SPDX-License-Identifier: MIT
# The examples of the pages in docs/ compile and run: each ```cpp block becomes a function, which is
# called with what tests/DocExamples.h says.
find_package(${mvr_qt} QUIET COMPONENTS Widgets)
if(NOT TARGET ${mvr_qt}::Widgets)
    message(STATUS "Qt's widgets are missing: the examples of the documentation are not compiled")
    return()
endif()

file(GLOB mvr_pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${mvr_pages})
set(mvr_examples "")
set(mvr_example_rows "")
foreach(page IN LISTS mvr_pages)
    get_filename_component(name ${page} NAME_WE)
    file(READ ${page} rest)
    set(number 0)
    while(TRUE)
        string(FIND "${rest}" "\n```cpp\n" begin)
        if(begin EQUAL -1)
            break()
        endif()
        math(EXPR begin "${begin} + 8")
        string(SUBSTRING "${rest}" ${begin} -1 rest)
        string(FIND "${rest}" "\n```" end)
        string(SUBSTRING "${rest}" 0 ${end} code)
        string(SUBSTRING "${rest}" ${end} -1 rest)
        math(EXPR number "${number} + 1")
        string(APPEND mvr_examples "static void ${name}${number}(DOC_EXAMPLE_ARGUMENTS)\n{\n"
            "#line 1 \"docs/${name}.md, example ${number}\"\n${code}\n}\n")
        string(APPEND mvr_example_rows "    {\"${name} ${number}\", ${name}${number}},\n")
    endwhile()
endforeach()

set(source ${CMAKE_CURRENT_BINARY_DIR}/DocExamples.cpp)
file(CONFIGURE OUTPUT ${source} CONTENT "#include \"DocExamples.h\"\n
@mvr_examples@
static const DocExample docExamples[] = {\n@mvr_example_rows@};\n
int main(int argc, char *argv[])\n{\n    return runDocExamples(argc, argv, docExamples);\n}\n" @ONLY)

add_executable(docexamples ${source})
mvr_configure_target(docexamples)
# An example shows a result without using it.
target_compile_options(docexamples PRIVATE -Wno-unused -Wno-unused-parameter)
target_include_directories(docexamples PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_compile_definitions(docexamples PRIVATE MVR_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(docexamples PRIVATE MvrText::MvrText MvrCore::MvrCore ${mvr_qt}::Widgets)
add_test(NAME docexamples COMMAND docexamples)
set_tests_properties(docexamples PROPERTIES ENVIRONMENT "${mvr_test_environment}" TIMEOUT 60)
