# Nobody shall find shared libraries where static ones were asked for without a word.
if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
  if(PROJECT_IS_TOP_LEVEL)
    set(severity FATAL_ERROR)
  else()  # the setting is meant for the larger project's own libraries
    set(severity WARNING)
  endif()
  message(${severity} "BUILD_SHARED_LIBS is off, but LayerData has only shared libraries: "
    "a static one could not keep its inner classes and its copy of RapidJSON apart from yours, "
    "and objects that programs and plug-ins hand to each other need one library to belong to.")
endif()
