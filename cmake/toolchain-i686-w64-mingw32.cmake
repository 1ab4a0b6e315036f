# Cross-building for Windows with Debian's MinGW-w64 (posix threads). Self-contained: an
# application may copy this one file (the installed package carries it too).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(NORLIB_TRIPLET i686-w64-mingw32)
set(CMAKE_C_COMPILER ${NORLIB_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${NORLIB_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${NORLIB_TRIPLET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${NORLIB_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
