# Installs the build tree to a folder of its own, moves it, builds the consumer against it, by CMake's package and by
# pkg-config, and runs it.
#
# cmake -DBUILD=<tree> -DSOURCES=<tests/package> -DSCRATCH=<folder> -DCOMPILER=<c++> -P check-consumer.cmake
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output
    OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT result EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "${command}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/first)
file(RENAME ${SCRATCH}/first ${SCRATCH}/moved)
set(prefix ${SCRATCH}/moved)

file(GLOB_RECURSE texts ${prefix}/lib/*.cmake ${prefix}/lib/*.pc)
if(NOT texts)
  message(FATAL_ERROR "no CMake package and no pkg-config file was installed")
endif()
foreach(text IN LISTS texts)
  file(STRINGS ${text} foreign REGEX "${BUILD}|${SOURCES}")
  if(foreign)
    message(FATAL_ERROR "${text} names the build: ${foreign}")
  endif()
endforeach()

run(${CMAKE_COMMAND} -S ${SOURCES}/consumer -B ${SCRATCH}/build -G Ninja -DCMAKE_CXX_COMPILER=${COMPILER}
  -DCMAKE_PREFIX_PATH=${prefix} -DCONSUMER_BINARY_FOLDER=${prefix}/bin)
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
set(ENV{QT_QPA_PLATFORM} offscreen)
run(${prefix}/bin/consumer)
foreach(expected IN ITEMS "button: 发送" "icon: there")
  if(NOT output MATCHES "${expected}")
    message(FATAL_ERROR "the consumer says \"${output}\", without \"${expected}\"")
  endif()
endforeach()

# The installed programs run where they are.
run(${prefix}/bin/playout --version)
run(${prefix}/bin/assistantservice --version)
message(STATUS "${output}")
