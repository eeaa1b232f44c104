include(${CMAKE_CURRENT_LIST_DIR}/LayerDataTargets.cmake)
