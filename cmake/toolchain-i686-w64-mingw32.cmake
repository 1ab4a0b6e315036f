set(CMAKE_SYSTEM_PROCESSOR i686)
set(NORLIB_TRIPLET i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw-common.cmake)
