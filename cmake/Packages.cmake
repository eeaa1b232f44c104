# What CPack makes of the components: three Debian packages, or one archive for Windows.
set(CPACK_PACKAGE_NAME layerdata)
set(CPACK_PACKAGE_VENDOR LayerData)
set(CPACK_PACKAGE_CONTACT "LayerData maintainers <maintainers@layerdata.example>"
  CACHE STRING "Who makes the packages")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL runtime development program documentation)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_STRIP_COMMAND ${CMAKE_STRIP})
  set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/Packaging/Windows/strip.cmake)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_STRIP_FILES ON)
  # Adds Debian's own files, and sets the dependencies.
  set(CPACK_DEBIAN_FOLDER ${PROJECT_SOURCE_DIR}/Packaging/Debian)
  set(CPACK_PRE_BUILD_SCRIPTS ${CPACK_DEBIAN_FOLDER}/prepare.cmake)
endif()

# -- Debian: liblayerdata1, liblayerdata-dev (with the documentation) and layerdata --

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_DEVELOPMENT_GROUP dev)
set(CPACK_COMPONENT_DOCUMENTATION_GROUP dev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE layerdata)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(about "LayerData reads delimited text and JSON into typed tables, reports what a
file lost, sorts, joins and groups the tables, and writes them so that they
read back the same. Around them it has strings, lists, dictionaries, dates,
documents, layer schemas, hashes and UUIDs.
")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME liblayerdata1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "typed tables, CSV, JSON and layer schemas - libraries
${about}
This package has the libraries that programs load.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME liblayerdata-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_DESCRIPTION "typed tables, CSV, JSON and layer schemas - development files
${about}
This package has the headers for C and C++, the files for CMake and
pkg-config, guides and examples.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME layerdata)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "convert, show, describe, check, join and sort tables
${about}
This package has the command layerdata.")

include(CPack)
