# The reference of Interface/ as HTML: target "reference", part of "all" and of what is installed for
# development where doxygen is there. Another version of it may warn of more; lint_reference judges that.

find_program(TSA_DOXYGEN doxygen)
if(NOT TSA_DOXYGEN)
    return()
endif()

set(reference "${CMAKE_BINARY_DIR}/reference")
file(GLOB headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/Interface/*")
add_custom_command(
    OUTPUT "${reference}/html/index.html"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${reference}"
    COMMAND ${CMAKE_COMMAND} -E env TSA_VERSION=${PROJECT_VERSION} "TSA_REFERENCE=${reference}"
        TSA_WARN_AS_ERROR=NO "${TSA_DOXYGEN}" docs/Doxyfile
    WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
    DEPENDS docs/Doxyfile docs/reference.dox ${headers}
    COMMENT "Generating the reference"
    VERBATIM
)
add_custom_target(reference ALL DEPENDS "${reference}/html/index.html")
install(DIRECTORY "${reference}/html/"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}/reference"
    COMPONENT development
)
