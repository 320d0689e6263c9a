# Install rules and the package that a host finds with find_package(TargetSelectArea).

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
install(TARGETS TargetSelectArea ${host_libraries} HandlerBase
    EXPORT TargetSelectAreaTargets
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
)
install(DIRECTORY Interface DESTINATION "${TSA_INSTALL_INCLUDEDIR}")
install(DIRECTORY host/common host/widgets DESTINATION "${TSA_INSTALL_INCLUDEDIR}/host"
    FILES_MATCHING PATTERN "*.h"
)
install(EXPORT TargetSelectAreaTargets
    NAMESPACE TargetSelectArea::
    DESTINATION "${package_dir}"
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
)
