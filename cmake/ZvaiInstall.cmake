# What `cmake --install` lays out, in three components: "runtime" (the libraries with languages, icons and theme), "dev"
# (headers, CMake package, pkg-config file) and "apps" (the programs).
include(CMakePackageConfigHelpers)

# All headers lie below this folder, so that they are included as "aicontroller/aicontroller.h".
set(ZVAI_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/zvaiassistant)
set(ZVAI_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/zvaiassistant)

# zvai_install_library(<target>): the library, as a part of the CMake package.
function(zvai_install_library target)
  if(NOT ZVAIASSISTANT_INSTALL)
    return()
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "SHARED_LIBRARY")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  endif()
  install(TARGETS ${target} EXPORT zvaiassistantTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
    INCLUDES DESTINATION ${ZVAI_INCLUDEDIR})
endfunction()

# zvai_install_headers(<file>...): each below the folder that it has in the sources.
function(zvai_install_headers)
  if(NOT ZVAIASSISTANT_INSTALL)
    return()
  endif()
  foreach(header IN LISTS ARGN)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${header} DESTINATION ${ZVAI_INCLUDEDIR}/${folder} COMPONENT dev)
  endforeach()
endfunction()

# zvai_install_include(<folder>): all headers below it.
function(zvai_install_include folder)
  if(ZVAIASSISTANT_INSTALL)
    install(DIRECTORY ${folder}/ DESTINATION ${ZVAI_INCLUDEDIR} COMPONENT dev
      FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
  endif()
endfunction()

# zvai_install_package(): the files by which CMake and pkg-config find the libraries.
function(zvai_install_package)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/zvaiassistantConfig.cmake.in
    ${PROJECT_BINARY_DIR}/zvaiassistantConfig.cmake INSTALL_DESTINATION ${ZVAI_CMAKEDIR})
  # Before 1.0 a minor version may change the interface.
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/zvaiassistantConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/zvaiassistantConfig.cmake ${PROJECT_BINARY_DIR}/zvaiassistantConfigVersion.cmake
    DESTINATION ${ZVAI_CMAKEDIR} COMPONENT dev)
  install(EXPORT zvaiassistantTargets NAMESPACE zvaiassistant:: DESTINATION ${ZVAI_CMAKEDIR} COMPONENT dev)
  zvai_install_pkgconfig(zvaiassistant)
  if(TARGET zvruntime_inprocess)
    zvai_install_pkgconfig(zvruntime_inprocess)
    zvai_install_pkgconfig(zvruntime_nats)
  endif()
endfunction()

# zvai_install_pkgconfig(<name>): cmake/<name>.pc.in, with all paths counted from where the file will lie.
function(zvai_install_pkgconfig name)
  set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH ZVAI_UP /${folder} /)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${folder} COMPONENT dev)
endfunction()
