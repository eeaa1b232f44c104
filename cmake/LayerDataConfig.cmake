include(${CMAKE_CURRENT_LIST_DIR}/LayerDataTargets.cmake)

# The only component is C, the C interface, which every installation has.
set(${CMAKE_FIND_PACKAGE_NAME}_C_FOUND TRUE)
foreach(component IN LISTS ${CMAKE_FIND_PACKAGE_NAME}_FIND_COMPONENTS)
  if(component STREQUAL C)
    continue()
  endif()
  set(${CMAKE_FIND_PACKAGE_NAME}_${component}_FOUND FALSE)
  if(${CMAKE_FIND_PACKAGE_NAME}_FIND_REQUIRED_${component})
    set(${CMAKE_FIND_PACKAGE_NAME}_FOUND FALSE)
    set(${CMAKE_FIND_PACKAGE_NAME}_NOT_FOUND_MESSAGE "LayerData has no component ${component}.")
  endif()
endforeach()
