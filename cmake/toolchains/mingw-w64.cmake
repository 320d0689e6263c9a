# Builds for Windows with Debian's MinGW-w64 and the Qt that scripts/windows/setup.sh makes. Threads
# are named by pthread_t, so the compiler is the variant with POSIX threads.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

cmake_path(SET root NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../..")
set(TSA_WINDOWS_QT "${root}build/windows-qt"
    CACHE PATH "Where Qt for Windows is installed"
)
set(CMAKE_FIND_ROOT_PATH "${TSA_WINDOWS_QT}" /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# lupdate and lrelease run here, so they are those of this system's Qt.
set(Qt5LinguistTools_DIR "/usr/lib/x86_64-linux-gnu/cmake/Qt5LinguistTools"
    CACHE PATH "Where Qt's tools for translations are installed"
)

set(CMAKE_CROSSCOMPILING_EMULATOR "${root}scripts/windows/wine.sh")
