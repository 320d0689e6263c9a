# What cpack makes of an installation: two archives and two Debian packages, one for each component.
#
#   cmake --preset package && cmake --build --preset package && cpack --preset package
#
# For Windows, with the preset "windows", one zip with both components and all that a PC lacks.

set(runtime_package libtargetselectarea${PROJECT_VERSION_MAJOR})

set(CPACK_GENERATOR "TGZ;DEB")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set(CPACK_PACKAGE_CONTACT "The makers of the target selection area <targetselectarea@localhost>")
set(CPACK_PACKAGE_VENDOR "The makers of the target selection area")
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
    set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
    set(CPACK_PACKAGE_FILE_NAME targetselectarea-${PROJECT_VERSION}-windows-x86_64)
endif()
# They follow the description of the project.
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "The library that a host loads, and the host's libraries that it depends on."
)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "For hosts: headers, files for CMake and pkg-config, the handler base, examples, the validator, the workbench."
)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The workbench stands on the libraries of the other package, which it names itself.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtargetselectarea-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${runtime_package} (= ${PROJECT_VERSION}), qtbase5-dev, libqt5svg5-dev"
)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake, pkg-config")

include(CPack)
