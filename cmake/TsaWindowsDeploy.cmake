# What a Windows PC lacks besides the project's own files: Qt, its plugins and the libraries of the
# compiler. Installed beside the workbench, where Windows and Qt look first.

if(NOT WIN32)
    return()
endif()

foreach(module IN ITEMS Core Gui Widgets Network Svg)
    install(FILES $<TARGET_FILE:Qt5::${module}>
        DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT development
    )
endforeach()

# tsa_install_qt_plugins(<folder> <plugin>...)
function(tsa_install_qt_plugins folder)
    foreach(plugin IN LISTS ARGN)
        install(FILES $<TARGET_FILE:Qt5::${plugin}>
            DESTINATION "${CMAKE_INSTALL_BINDIR}/${folder}" COMPONENT development
        )
    endforeach()
endfunction()

tsa_install_qt_plugins(platforms QWindowsIntegrationPlugin QOffscreenIntegrationPlugin)
tsa_install_qt_plugins(styles QWindowsVistaStylePlugin)
tsa_install_qt_plugins(imageformats QSvgPlugin)
tsa_install_qt_plugins(iconengines QSvgIconPlugin)

foreach(library IN ITEMS libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
    execute_process(
        COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${library}
        OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY
    )
    # The compiler names a library alone that it does not find beside its own ones: MSYS2 has them
    # beside the compiler.
    if(NOT IS_ABSOLUTE "${file}")
        cmake_path(GET CMAKE_CXX_COMPILER PARENT_PATH folder)
        set(file "${folder}/${library}")
    endif()
    install(FILES "${file}" DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT development)
endforeach()

# Qt's own texts in Chinese, which are a project of their own and the same on every system.
find_file(TSA_QT_TRANSLATION qtbase_zh_CN.qm
    HINTS "${Qt5Core_DIR}/../../../translations" "${Qt5Core_DIR}/../../../share/qt5/translations"
    NO_CMAKE_FIND_ROOT_PATH
)
if(TSA_QT_TRANSLATION)
    install(FILES "${TSA_QT_TRANSLATION}" DESTINATION translations COMPONENT development)
endif()
install(FILES host/workbench/projects/sample.json
    DESTINATION projects COMPONENT development
)
