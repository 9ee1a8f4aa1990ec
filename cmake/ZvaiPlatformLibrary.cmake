# zvai_platform_library(<name>): makes the target platform::<name>, which the module links.
#
# The libraries below platform/ stand in for the host's own. A host that has its own library sets
# ZVAIASSISTANT_PLATFORM_<NAME> to that library's CMake target before adding this project; ours is then not built.
macro(zvai_platform_library name)
  string(TOUPPER ${name} _zvai_upper)
  set(ZVAIASSISTANT_PLATFORM_${_zvai_upper} "" CACHE STRING
    "CMake target of the host's own ${name}; empty builds the one in platform/${name}")
  set(_zvai_target ${ZVAIASSISTANT_PLATFORM_${_zvai_upper}})
  if(NOT _zvai_target)
    add_subdirectory(${name})
    set(_zvai_target ${name})
  elseif(NOT TARGET ${_zvai_target})
    message(FATAL_ERROR "ZVAIASSISTANT_PLATFORM_${_zvai_upper} names '${_zvai_target}', which is not a CMake target")
  endif()
  add_library(platform_${name} INTERFACE)
  target_link_libraries(platform_${name} INTERFACE ${_zvai_target})
  add_library(platform::${name} ALIAS platform_${name})
  zvai_install_library(platform_${name})
endmacro()
