# Exceptions reach the library's callers, so both must use one C++ runtime: its DLLs are copied beside
# layerdata.dll, in the build tree and in the installed package, there with their licences.
foreach(name libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}.dll
    OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT IS_ABSOLUTE "${dll}")  # the compiler prints only the name of a file that it does not find
    find_file(dll_${name} ${name}.dll PATHS /usr/x86_64-w64-mingw32/lib NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(dll ${dll_${name}})
  endif()
  file(COPY ${dll} DESTINATION ${CMAKE_BINARY_DIR}/bin)
  install(FILES ${dll} DESTINATION ${CMAKE_INSTALL_BINDIR})
endforeach()
install(FILES /usr/share/common-licenses/GPL-3 DESTINATION ${CMAKE_INSTALL_DOCDIR}/licenses)
foreach(package gcc-mingw-w64-base mingw-w64-common)
  install(FILES /usr/share/doc/${package}/copyright
    DESTINATION ${CMAKE_INSTALL_DOCDIR}/licenses RENAME ${package}.txt)
endforeach()
