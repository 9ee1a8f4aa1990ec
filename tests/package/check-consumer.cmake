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
run(${prefix}/bin/interfaces)
message(STATUS "${output}")

set(ENV{QT_QPA_PLATFORM} offscreen)
file(MAKE_DIRECTORY ${SCRATCH}/run)
file(CHMOD ${SCRATCH}/run PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
set(ENV{XDG_RUNTIME_DIR} ${SCRATCH}/run)
function(run_consumer program)
  run(${program})
  foreach(expected IN ITEMS "button: 发送" "icon: there" "nats: .*two words")
    if(NOT output MATCHES "${expected}")
      message(FATAL_ERROR "${program} says \"${output}\", without \"${expected}\"")
    endif()
  endforeach()
endfunction()
run_consumer(${prefix}/bin/consumer)

# The same by pkg-config, for hosts that are not built by CMake. Qt itself asks for -fPIC.
file(GLOB_RECURSE description ${prefix}/lib/*/zvaiassistant.pc)
cmake_path(GET description PARENT_PATH descriptions)
cmake_path(GET descriptions PARENT_PATH libraries)
set(ENV{PKG_CONFIG_PATH} ${descriptions})
run(pkg-config --cflags --libs zvaiassistant zvruntime_inprocess zvruntime_nats)
separate_arguments(flags UNIX_COMMAND "${output}")
run(${COMPILER} -fPIC ${SOURCES}/consumer/main.cpp -o ${prefix}/bin/pkgconfigconsumer ${flags} -Wl,-rpath,${libraries})
run_consumer(${prefix}/bin/pkgconfigconsumer)

# A theme of one's own begins as a copy of the installed one, with its pictures.
if(NOT EXISTS ${prefix}/share/zvaiassistant/theme/aiassistanttheme/images/loading.gif)
  message(FATAL_ERROR "the installed theme does not find its pictures")
endif()

# The installed programs run where they are.
run(${prefix}/bin/playout --version)
run(${prefix}/bin/assistantservice --version)
message(STATUS "${output}")
