# The texts of the public headers as a table; a comment that breaks the grammar fails the build.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(texts_scripts ${PROJECT_SOURCE_DIR}/tools/texts)
set(texts_table ${CMAKE_CURRENT_BINARY_DIR}/texts_table.cpp)
file(GLOB texts_inputs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/*.h ${PROJECT_SOURCE_DIR}/include/qbobj/*.h
    ${PROJECT_SOURCE_DIR}/schema/*.sql)
add_custom_command(OUTPUT ${texts_table}
    COMMAND ${Python3_EXECUTABLE} -B ${texts_scripts}/make_texts.py
        ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/schema ${texts_table}
    DEPENDS ${texts_inputs} ${texts_scripts}/make_texts.py ${texts_scripts}/header_parser.py
    COMMENT "Reading the comments of the public headers" VERBATIM)

add_library(qbobj_texts STATIC ${CMAKE_CURRENT_SOURCE_DIR}/operations/texts.cpp ${texts_table})
target_include_directories(qbobj_texts PUBLIC ${PROJECT_SOURCE_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(qbobj_texts PUBLIC qbdb PRIVATE project_settings)
