include(${CMAKE_CURRENT_LIST_DIR}/LayerDataTargets.cmake)

# The package has no components, so none that is asked for is found.
foreach(component IN LISTS ${CMAKE_FIND_PACKAGE_NAME}_FIND_COMPONENTS)
  set(${CMAKE_FIND_PACKAGE_NAME}_${component}_FOUND FALSE)
  if(${CMAKE_FIND_PACKAGE_NAME}_FIND_REQUIRED_${component})
    set(${CMAKE_FIND_PACKAGE_NAME}_FOUND FALSE)
    set(${CMAKE_FIND_PACKAGE_NAME}_NOT_FOUND_MESSAGE "LayerData has no component ${component}.")
  endif()
endforeach()
