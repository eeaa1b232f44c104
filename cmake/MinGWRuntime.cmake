# Exceptions reach the library's callers, so both must use one C++ runtime: its DLLs are copied beside
# layerdata.dll without their debug information, and installed with their licences.
foreach(name libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}.dll
    OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT IS_ABSOLUTE "${dll}")  # the compiler prints only the name of a file that it does not find
    find_file(dll_${name} ${name}.dll PATHS /usr/x86_64-w64-mingw32/lib NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(dll ${dll_${name}})
  endif()
  set(stripped ${CMAKE_BINARY_DIR}/bin/${name}.dll)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
  execute_process(COMMAND ${CMAKE_STRIP} --preserve-dates -o ${stripped} ${dll} COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${stripped} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
endforeach()
install(FILES /usr/share/common-licenses/GPL-3 DESTINATION ${CMAKE_INSTALL_DOCDIR}/licenses COMPONENT runtime)
foreach(package gcc-mingw-w64-base mingw-w64-common)
  install(FILES /usr/share/doc/${package}/copyright
    DESTINATION ${CMAKE_INSTALL_DOCDIR}/licenses RENAME ${package}.txt COMPONENT runtime)
endforeach()
