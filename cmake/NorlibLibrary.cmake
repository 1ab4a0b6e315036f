# One of the three DLLs: its public include folder, its build define (which turns its API
# macro into dllexport) and the project's warnings.
function(norlib_add_library name include_dir build_define)
  add_library(${name} SHARED ${ARGN})
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${include_dir}>
                                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_definitions(${name} PRIVATE ${build_define})
  target_compile_options(${name} PRIVATE ${NORLIB_WARNINGS})
  set_target_properties(${name} PROPERTIES PREFIX "")
endfunction()
