# One static library for each layer of the product, linked as the table of layers says.

include(TsaLayers)

# tsa_layer_target(<folder> <variable>)
#
# Sets <variable> to the target of a row of the table, empty for one that has headers only.
function(tsa_layer_target folder variable)
    if(folder STREQUAL "host/common")
        set(target HostCommon)
    elseif(folder STREQUAL "host/widgets")
        set(target HostWidgets)
    elseif(folder STREQUAL "Interface")
        set(target "")
    else()
        string(REPLACE "/" "_" target "tsa_${folder}")
    endif()
    set(${variable} "${target}" PARENT_SCOPE)
endfunction()

# tsa_add_layer(<folder> <sources>...)
#
# The library of the sources in a folder that has a row in the table, with what its row names.
function(tsa_add_layer folder)
    tsa_layer_target("${folder}" name)
    set(below "")
    foreach(row IN LISTS TSA_LAYERS)
        string(REPLACE "|" ";" cells "${row}")
        list(GET cells 0 row_folder)
        string(STRIP "${row_folder}" row_folder)
        if(row_folder STREQUAL folder)
            list(GET cells 1 below)
            string(STRIP "${below}" below)
        endif()
    endforeach()
    separate_arguments(below)
    if(NOT below)
        message(FATAL_ERROR "cmake/TsaLayers.cmake has no row for ${folder}")
    endif()
    add_library(${name} STATIC ${ARGN})
    foreach(layer IN LISTS below)
        tsa_layer_target("${layer}" target)
        target_link_libraries(${name} PUBLIC ${target})
    endforeach()
    target_link_libraries(${name}
        PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets Qt5::Network Qt5::Svg
        PRIVATE tsa_warnings
    )
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}")
    set_target_properties(${name} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
    )
endfunction()
