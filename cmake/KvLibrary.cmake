# kv_add_library(NAME TYPE [SOURCES ...] [PUBLIC libs...] [PRIVATE libs...])
#
# One library per source folder. Its headers are included as "folder/File.h"
# through an include root of its own (a link to the folder under the build
# tree), so a target sees the headers of exactly the libraries it links: an
# include that points up or sideways in the layers does not build.
function(kv_add_library name type)
    cmake_parse_arguments(KV "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    set(root ${PROJECT_BINARY_DIR}/include/${name})
    file(MAKE_DIRECTORY ${root})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${folder} SYMBOLIC)
    if(type STREQUAL "INTERFACE")
        add_library(${name} INTERFACE ${KV_SOURCES})
        target_include_directories(${name} INTERFACE $<BUILD_INTERFACE:${root}>)
        target_link_libraries(${name} INTERFACE ${KV_PUBLIC})
        return()
    endif()
    add_library(${name} ${type} ${KV_SOURCES})
    target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${root}>)
    target_link_libraries(${name} PUBLIC ${KV_PUBLIC} PRIVATE ${KV_PRIVATE})
endfunction()
