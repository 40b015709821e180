# A layer is a static library over one folder of src/. It sees the headers of its own folder and of
# the layers it names, and no others: each layer's include directory holds a single link, its own
# folder. So `#include "core/..."` does not compile in a layer that does not use core.
#
# A layer marked PURE must not include a header of the toolkit, the bus or the operating system
# either; scripts/check-layers says so during the build.
#
#   plenzo_layer(dates PURE SOURCES instant.cpp ... USES propertylist LIBRARIES cctz::cctz)

function(plenzo_layer name)
    cmake_parse_arguments(LAYER "PURE" "" "SOURCES;USES;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
    set(kind PUBLIC)
    if(LAYER_SOURCES)
        add_library(${name} STATIC ${LAYER_SOURCES})
        target_link_libraries(${name} PRIVATE plenzo_compiler)
    else()
        add_library(${name} INTERFACE)
        set(kind INTERFACE)
    endif()

    set(include_directory ${CMAKE_BINARY_DIR}/layers/${name})
    get_filename_component(parent ${include_directory}/${name} DIRECTORY)
    file(MAKE_DIRECTORY ${parent})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${name} ${include_directory}/${name} SYMBOLIC)
    target_include_directories(${name} ${kind} ${include_directory})
    target_link_libraries(${name} ${kind} ${LAYER_USES} ${LAYER_LIBRARIES})
    if(LAYER_PRIVATE_LIBRARIES)
        target_link_libraries(${name} PRIVATE ${LAYER_PRIVATE_LIBRARIES})
    endif()
    if(LAYER_PURE)
        set_property(GLOBAL APPEND PROPERTY PLENZO_PURE_LAYERS ${name})
        add_dependencies(${name} check-layers)
    endif()
endfunction()

add_custom_target(check-layers
    COMMAND ${CMAKE_SOURCE_DIR}/scripts/check-layers
    COMMENT "Checking what the layers include" VERBATIM)
