# tsa_add_translations(<target> PREFIX <resource prefix> FILES <.ts>...)
#
# Compiles the translation files and puts the results into <target> as resources, so that a program
# needs no files beside its binary to follow a language change.

function(tsa_add_translations target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "NAME;PREFIX" "FILES")
    set_source_files_properties(${arg_FILES} PROPERTIES OUTPUT_LOCATION "${CMAKE_CURRENT_BINARY_DIR}")
    qt5_add_translation(qm_files ${arg_FILES})
    set(collection "${CMAKE_CURRENT_BINARY_DIR}/${arg_NAME}.qrc")
    set(content "<RCC>\n  <qresource prefix=\"${arg_PREFIX}\">\n")
    foreach(qm_file IN LISTS qm_files)
        get_filename_component(qm_name "${qm_file}" NAME)
        string(APPEND content "    <file alias=\"${qm_name}\">${qm_file}</file>\n")
    endforeach()
    string(APPEND content "  </qresource>\n</RCC>\n")
    file(CONFIGURE OUTPUT "${collection}" CONTENT "${content}" @ONLY)
    target_sources(${target} PRIVATE ${qm_files} "${collection}")
    set_property(SOURCE "${collection}" APPEND PROPERTY OBJECT_DEPENDS "${qm_files}")
endfunction()
