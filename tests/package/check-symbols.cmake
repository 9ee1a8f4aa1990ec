# Compares what the library exports with the classes and functions that a host may use.
#
# cmake -DLIBRARY=<libzvaiassistant.so> -DNM=<nm> -P check-symbols.cmake
set(expected AiController IAiController MainWidget PixmapLabel Theme TranslateManager changeAppStyleSheet changeTheme)

execute_process(COMMAND ${NM} --dynamic --demangle --defined-only ${LIBRARY}
  OUTPUT_VARIABLE table RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${NM} cannot read ${LIBRARY}")
endif()
# Inline functions of Qt and of the standard library are there as well; they belong to nobody.
string(REGEX MATCHALL "\n[0-9a-f]+ [A-Za-z] (vtable for |typeinfo for |typeinfo name for |non-virtual thunk to )?tavro::[^\n]*"
  symbols "${table}")
set(found)
foreach(symbol IN LISTS symbols)
  if(symbol MATCHES "::Private")
    message(FATAL_ERROR "a private part is exported:${symbol}")
  endif()
  if(NOT symbol MATCHES "tavro::aiassistant::([A-Za-z]+)")
    message(FATAL_ERROR "exported from another namespace:${symbol}")
  endif()
  list(APPEND found ${CMAKE_MATCH_1})
endforeach()
list(REMOVE_DUPLICATES found)
list(SORT found)
if(NOT found STREQUAL expected)
  message(FATAL_ERROR "exported: ${found}\nexpected: ${expected}")
endif()
