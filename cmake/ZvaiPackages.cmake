# The Debian packages that `cpack` makes of the three components: libraries, development files, programs.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zvaiassistant)
set(CPACK_PACKAGE_VENDOR "The zvaiassistant developers")
set(CPACK_PACKAGE_CONTACT "The zvaiassistant developers <zvaiassistant@localhost>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
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
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzvaiassistant${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "AI assistant panel for media playout hosts: libraries
 The chat panel and its controller, with languages, icons and theme.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libzvaiassistant-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "qtbase5-dev (>= 5.15), libspdlog-dev, libnats-dev, pkg-config")
set(CPACK_DEBIAN_DEV_DESCRIPTION "AI assistant panel for media playout hosts: development files
 Headers, CMake package and pkg-config file.")
set(CPACK_COMPONENT_DEV_DEPENDS runtime)

set(CPACK_DEBIAN_APPS_PACKAGE_NAME zvaiassistant-apps)
set(CPACK_DEBIAN_APPS_PACKAGE_SECTION video)
set(CPACK_DEBIAN_APPS_PACKAGE_SUGGESTS nats-server)
set(CPACK_DEBIAN_APPS_DESCRIPTION "AI assistant panel for media playout hosts: programs
 The sample playout host, and assistantservice, the AI service.")
set(CPACK_COMPONENT_APPS_DEPENDS runtime)

include(CPack)
