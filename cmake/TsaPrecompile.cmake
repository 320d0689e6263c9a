# Precompiled headers, which take about half off the time of a build: Qt's headers and the standard
# library's, never ours. A source still includes what it uses; the lints compile without them.

# Clang would need one set of them for each visibility.
set(precompile OFF)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(precompile ON)
endif()
option(TSA_PRECOMPILE "Precompile the headers of Qt and the standard library" ${precompile})

set(TSA_PRECOMPILED_HEADERS
    <QAbstractItemModel>
    <QApplication>
    <QCoreApplication>
    <QDialog>
    <QHash>
    <QLabel>
    <QLineEdit>
    <QList>
    <QMenu>
    <QObject>
    <QPainter>
    <QPointer>
    <QSet>
    <QStandardItemModel>
    <QString>
    <QStringList>
    <QTimer>
    <QTreeView>
    <QUuid>
    <QVBoxLayout>
    <QWidget>
    <algorithm>
    <functional>
    <memory>
    <optional>
    <utility>
    <vector>
)

# tsa_add_precompiled(<name> LIBRARIES <libs>... [HEADERS <more>...])
#
# A target whose precompiled headers others use. GCC accepts them in a target that has more macros, as
# long as the headers do not look at those.
function(tsa_add_precompiled name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;HEADERS")
    if(NOT TSA_PRECOMPILE)
        return()
    endif()
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "// Brings the precompiled headers into being.\n")
    add_library(${name} OBJECT "${source}")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} tsa_warnings)
    target_precompile_headers(${name} PRIVATE ${TSA_PRECOMPILED_HEADERS} ${arg_HEADERS})
endfunction()

# tsa_precompile(<target> <precompiled>)
function(tsa_precompile target precompiled)
    if(TSA_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM ${precompiled})
    endif()
endfunction()

# tsa_precompile_below(<precompiled> <folder>...)
#
# Gives every library and program in these folders the precompiled headers.
function(tsa_precompile_below precompiled)
    foreach(folder IN LISTS ARGN)
        get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
        foreach(target IN LISTS targets)
            get_target_property(type ${target} TYPE)
            if(type MATCHES "^((STATIC|SHARED)_LIBRARY|EXECUTABLE)$")
                tsa_precompile(${target} ${precompiled})
            endif()
        endforeach()
        get_property(below DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
        tsa_precompile_below(${precompiled} ${below})
    endforeach()
endfunction()
