# zvai_test(<name> SOURCES <file>... [LIBRARIES <target>...] [LABELS <label>...] [TIMEOUT <seconds>])
#
# Adds a QtTest program of that name, run without a display and away from the user's own folders.
# The time-out is for tests that hang: one that works takes seconds, but machines may be slow or busy.
function(zvai_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "TIMEOUT" "SOURCES;LIBRARIES;LABELS")
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 600)
  endif()
  add_executable(${name} ${arg_SOURCES})
  zvai_target(${name})
  set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_link_libraries(${name} PRIVATE Qt5::Test ${arg_LIBRARIES})
  add_test(NAME ${name} COMMAND ${name})
  math(EXPR function_timeout_ms "${arg_TIMEOUT} * 1000 - 5000")
  set_tests_properties(${name} PROPERTIES
    LABELS "${arg_LABELS}"
    TIMEOUT ${arg_TIMEOUT}
    ENVIRONMENT "${ZVAI_TEST_ENVIRONMENT};QTEST_FUNCTION_TIMEOUT=${function_timeout_ms};XDG_DATA_HOME=${CMAKE_CURRENT_BINARY_DIR}/${name}.data")
endfunction()
