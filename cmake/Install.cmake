# What `cmake --install` puts where, in the components runtime, development, program and documentation.
include(CMakePackageConfigHelpers)

# Core/, Data/ and LayerData/ stand in a folder of their own, and releases that break with each other beside
# each other.
set(LAYERDATA_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/layerdata-${PROJECT_VERSION_MAJOR})
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/LayerData)
set_target_properties(LayerDataCpp PROPERTIES EXPORT_NAME Cpp)

install(TARGETS LayerData LayerDataC LayerDataCpp EXPORT LayerDataTargets
  RUNTIME COMPONENT runtime
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development
  INCLUDES DESTINATION ${LAYERDATA_INCLUDEDIR})
install(FILES LICENSE THIRD-PARTY-NOTICES.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)

install(DIRECTORY Include/ DESTINATION ${LAYERDATA_INCLUDEDIR} COMPONENT development)
write_basic_package_version_file(LayerDataConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_file(cmake/LayerDataConfig.cmake.in LayerDataConfig.cmake @ONLY)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/LayerDataConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/LayerDataConfigVersion.cmake
  DESTINATION ${package} COMPONENT development)
install(EXPORT LayerDataTargets NAMESPACE LayerData:: DESTINATION ${package} COMPONENT development)

# add_pkg_config(NAME TITLE): a pkg-config file that finds the library from its own place, wherever that is.
function(add_pkg_config name title)
  file(RELATIVE_PATH up ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
  string(REGEX REPLACE "/$" "" up ${up})
  configure_file(cmake/pkg-config.pc.in ${name}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()
add_pkg_config(layerdata "LayerData")
add_pkg_config(layerdata-c "LayerData C interface")

if(WIN32)  # other tool chains make import libraries of their own from the lists of exports
  install(FILES ${LayerData_BINARY_DIR}/Source/layerdata.def ${LayerData_BINARY_DIR}/Source/C/layerdata-c.def
    DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endif()

# gdb looks here for what shows the objects of a library. Each library may be used without the other.
if(NOT WIN32)
  foreach(name liblayerdata.so liblayerdata-c.so)
    install(FILES Debuggers/layerdata-gdb.py RENAME ${name}.${PROJECT_VERSION}-gdb.py
      DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR} COMPONENT development)
  endforeach()
endif()
install(FILES Debuggers/layerdata.natvis DESTINATION ${CMAKE_INSTALL_DATADIR}/LayerData COMPONENT development)

if(TARGET Program)
  install(TARGETS Program RUNTIME COMPONENT program)
  if(NOT WIN32)
    install(FILES Programs/layerdata.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
    install(FILES Programs/layerdata.bash RENAME layerdata
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT program)
  endif()
endif()

install(FILES CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY Docs/Guides DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY Examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation PATTERN Expected EXCLUDE)

if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
    COMMENT "Removing what the last installation of each component has written" VERBATIM)
endif()
