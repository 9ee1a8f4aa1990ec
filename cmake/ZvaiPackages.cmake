# The Debian packages that `cpack` makes of the three components: libraries, development files, programs.
#
# They hold the tree as it was configured: for a package that is as a distribution's, configure with the prefix /usr (the
# preset "package").
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zvaiassistant)
set(CPACK_PACKAGE_VENDOR "The zvaiassistant developers")
if(NOT CPACK_PACKAGE_CONTACT)
  set(CPACK_PACKAGE_CONTACT "The zvaiassistant developers <zvaiassistant@localhost>")
endif()
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# The first line of each package's own description is its summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime dev apps)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The packages depend on what their files are linked with, also on the first of them, which is not installed yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/lib)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(packaging ${PROJECT_SOURCE_DIR}/cmake/packaging)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzvaiassistant${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${packaging}/triggers)
# Letters for the panel's Chinese and Korean.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS fonts-noto-cjk)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "AI assistant panel for media playout hosts (libraries)
 The chat panel and its controller, with languages, icons and theme.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libzvaiassistant-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "qtbase5-dev (>= 5.15), libspdlog-dev, libnats-dev, pkg-config")
set(CPACK_DEBIAN_DEV_DESCRIPTION "AI assistant panel for media playout hosts (development files)
 Headers, CMake package and pkg-config files.")
set(CPACK_COMPONENT_DEV_DEPENDS runtime)

set(CPACK_DEBIAN_APPS_PACKAGE_NAME zvaiassistant-apps)
set(CPACK_DEBIAN_APPS_PACKAGE_SECTION video)
set(CPACK_DEBIAN_APPS_PACKAGE_SUGGESTS nats-server)
set(CPACK_DEBIAN_APPS_DESCRIPTION "AI assistant panel for media playout hosts (programs)
 The sample playout host, and assistantservice, the AI service.")
set(CPACK_COMPONENT_APPS_DEPENDS runtime)

# zvai_compress(<file> <result>): as Debian wants its documents, without the time of day in it.
function(zvai_compress file result)
  execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${result} COMMAND_ERROR_IS_FATAL ANY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
endfunction()

# zvai_package_documents(<component> <package>): what each Debian package says of itself, and where it departs from rules.
function(zvai_package_documents component package)
  set(folder ${PROJECT_BINARY_DIR}/packaging/${package})
  string(TIMESTAMP ZVAI_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
  configure_file(${packaging}/changelog.in ${folder}/changelog @ONLY)
  zvai_compress(${folder}/changelog ${folder}/changelog.gz)
  install(FILES ${packaging}/copyright ${folder}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
  install(FILES ${packaging}/overrides/${package}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${component})
endfunction()

zvai_package_documents(runtime ${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME})
zvai_package_documents(dev ${CPACK_DEBIAN_DEV_PACKAGE_NAME})
zvai_package_documents(apps ${CPACK_DEBIAN_APPS_PACKAGE_NAME})

foreach(program IN ITEMS assistantservice playout)
  if(TARGET ${program})
    zvai_compress(${PROJECT_SOURCE_DIR}/docs/man/${program}.1 ${PROJECT_BINARY_DIR}/${program}.1.gz)
    install(FILES ${PROJECT_BINARY_DIR}/${program}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT apps)
  endif()
endforeach()

include(CPack)
