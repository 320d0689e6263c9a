# Install rules, and what a host finds them with: the CMake package TargetSelectArea and files for
# pkg-config. The component "runtime" has what runs, "development" what a host is built with.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/TargetSelectArea")

# The library stands on the host's own ones, which lie beside it.
set_target_properties(TargetSelectArea PROPERTIES INSTALL_RPATH "\$ORIGIN")

set(host_libraries HostCommon)
if(TARGET HostWidgets)
    list(APPEND host_libraries HostWidgets)
endif()
# Libraries of one major version take each other's place.
set_target_properties(TargetSelectArea ${host_libraries} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
)
install(TARGETS TargetSelectArea ${host_libraries} HandlerBase HandlerRelay Record
    EXPORT TargetSelectAreaTargets
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        COMPONENT runtime
        NAMELINK_COMPONENT development
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
)
if(TARGET targetselect-validate)
    install(TARGETS targetselect-validate
        EXPORT TargetSelectAreaTargets
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT development
    )
endif()
install(DIRECTORY Interface DESTINATION "${TSA_INSTALL_INCLUDEDIR}" COMPONENT development)
install(DIRECTORY sdk/relay sdk/record DESTINATION "${TSA_INSTALL_INCLUDEDIR}/sdk"
    COMPONENT development FILES_MATCHING PATTERN "*.h"
)
# Of the host's libraries, the headers that export something; the others are their own.
file(GLOB host_headers RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS
    host/common/*.h host/widgets/*.h
)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${host_headers})
foreach(header IN LISTS host_headers)
    file(STRINGS "${header}" exports LIMIT_COUNT 1 REGEX "HOST(COMMON|WIDGETS)_EXPORT")
    if(exports)
        cmake_path(GET header PARENT_PATH folder)
        install(FILES "${header}" DESTINATION "${TSA_INSTALL_INCLUDEDIR}/${folder}"
            COMPONENT development
        )
    endif()
endforeach()
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT development)
install(FILES CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT development)
install(FILES docs/diagnostics.md docs/integrating.md docs/logging.md docs/scripts.md docs/simulator.md
    docs/trace-format.md docs/validator.md docs/windows.md docs/workbench-host.md
    docs/workbench.md
    DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs"
    COMPONENT development
)
install(FILES docs/images/workbench.png docs/images/workbench-faults.png
    docs/images/workbench-network.png docs/images/workbench-record.png
    docs/images/workbench-replay.png
    DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs/images"
    COMPONENT development
)
install(EXPORT TargetSelectAreaTargets
    NAMESPACE TargetSelectArea::
    DESTINATION "${package_dir}"
    COMPONENT development
)
configure_package_config_file(
    cmake/TargetSelectAreaConfig.cmake.in
    "${CMAKE_CURRENT_BINARY_DIR}/TargetSelectAreaConfig.cmake"
    INSTALL_DESTINATION "${package_dir}"
)
write_basic_package_version_file(
    "${CMAKE_CURRENT_BINARY_DIR}/TargetSelectAreaConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion
)
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/TargetSelectAreaConfig.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/TargetSelectAreaConfigVersion.cmake"
    DESTINATION "${package_dir}"
    COMPONENT development
)

# tsa_install_pkg_config(<target> DESCRIPTION <text> REQUIRES <modules>)
#
# A file for pkg-config, named after the target's library. It finds the prefix from its own place.
function(tsa_install_pkg_config target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESCRIPTION;REQUIRES" "")
    get_target_property(library ${target} OUTPUT_NAME)
    if(NOT library)
        set(library ${target})
    endif()
    set(folder "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
    file(RELATIVE_PATH to_prefix "/${folder}" "/")
    string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
    configure_file(cmake/Library.pc.in "${CMAKE_CURRENT_BINARY_DIR}/${library}.pc" @ONLY)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${library}.pc"
        DESTINATION "${folder}"
        COMPONENT development
    )
endfunction()

tsa_install_pkg_config(HostCommon
    DESCRIPTION "The host's log, work thread and software name"
    REQUIRES "Qt5Core >= 5.15"
)
if(TARGET HostWidgets)
    tsa_install_pkg_config(HostWidgets
        DESCRIPTION "The host's widgets and theme"
        REQUIRES "HostCommon = ${PROJECT_VERSION}, Qt5Widgets >= 5.15"
    )
endif()
tsa_install_pkg_config(HandlerBase
    DESCRIPTION "A handler for hosts of the target selection area to derive from"
    REQUIRES "HostCommon = ${PROJECT_VERSION}"
)
tsa_install_pkg_config(HandlerRelay
    DESCRIPTION "A handler that shows each call of the target selection area as a value"
    REQUIRES "HostCommon = ${PROJECT_VERSION}, Qt5Widgets >= 5.15"
)
tsa_install_pkg_config(Record
    DESCRIPTION "Records the target selection area in a host"
    REQUIRES "TargetSelectAreaHandlerRelay = ${PROJECT_VERSION}"
)
tsa_install_pkg_config(TargetSelectArea
    DESCRIPTION "${PROJECT_DESCRIPTION}"
    REQUIRES "HostCommon = ${PROJECT_VERSION}, Qt5Widgets >= 5.15"
)
