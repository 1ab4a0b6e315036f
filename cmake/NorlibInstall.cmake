# A self-contained install tree: DLLs with their runtime in bin/, import libraries in lib/,
# headers in include/ and the CMake package in lib/cmake/Norlib2.
include(CMakePackageConfigHelpers)

install(TARGETS norstr norlib1 norlib2 EXPORT Norlib2Targets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY strings/include/ base/include/ include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${NORLIB_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR})

install(EXPORT Norlib2Targets NAMESPACE Norlib2:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Norlib2)
set(NORLIB_RUNTIME_DLL_NAMES)
foreach(_dll ${NORLIB_RUNTIME_DLLS})
  get_filename_component(_name "${_dll}" NAME)
  list(APPEND NORLIB_RUNTIME_DLL_NAMES "${_name}")
endforeach()
configure_package_config_file(cmake/Norlib2Config.cmake.in
  ${CMAKE_BINARY_DIR}/Norlib2Config.cmake INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Norlib2
  PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/Norlib2ConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/Norlib2Config.cmake ${CMAKE_BINARY_DIR}/Norlib2ConfigVersion.cmake
              cmake/toolchain-x86_64-w64-mingw32.cmake cmake/toolchain-i686-w64-mingw32.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Norlib2)
