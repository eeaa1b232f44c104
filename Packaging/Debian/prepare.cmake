# CPack runs this before it packs: what Debian wants beyond the installation, and the dependencies.
if(NOT CPACK_GENERATOR STREQUAL DEB)
  return()
endif()
set(version ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(work ${CPACK_TOPLEVEL_DIRECTORY}/Debian)
set(symbols ${work}/debian/liblayerdata1/DEBIAN/symbols)  # where dpkg-shlibdeps finds it
file(MAKE_DIRECTORY ${work}/debian/liblayerdata1/DEBIAN)
file(TOUCH ${work}/debian/control)

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${work}
    OUTPUT_VARIABLE output ERROR_VARIABLE problems RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "${command}\n${output}${problems}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(GLOB libraries ${CPACK_TEMPORARY_DIRECTORY}/runtime/usr/lib/*/*.so.*.*.*)
if(NOT libraries)
  message(FATAL_ERROR "Debian's libraries stand in /usr/lib/<architecture>: configure with -DCMAKE_INSTALL_PREFIX=/usr.")
endif()
file(STRINGS ${CPACK_DEBIAN_FOLDER}/changelog newest LIMIT_COUNT 1)
if(NOT newest MATCHES "\\(${version}\\)")
  message(FATAL_ERROR "The changelog of the Debian packages does not begin with ${version}: ${newest}")
endif()

# -- Files --

# package(NAME COMPONENT): the folder of a package's documents, with what each package must have there.
function(package name component)
  set(share ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share)
  set(documents ${share}/doc/${name})
  if(EXISTS ${share}/doc/LayerData)
    file(RENAME ${share}/doc/LayerData ${documents})
  endif()
  file(COPY ${CPACK_DEBIAN_FOLDER}/copyright DESTINATION ${documents})
  file(MAKE_DIRECTORY ${share}/lintian/overrides)
  file(COPY_FILE ${CPACK_DEBIAN_FOLDER}/lintian-overrides ${share}/lintian/overrides/${name})
  file(COPY_FILE ${CPACK_DEBIAN_FOLDER}/changelog ${documents}/changelog.Debian)
  file(REMOVE ${documents}/LICENSE ${documents}/THIRD-PARTY-NOTICES.md)  # the file copyright says the same
  if(EXISTS ${documents}/CHANGELOG.md)
    file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
  endif()
  if(EXISTS ${documents}/Examples)
    file(RENAME ${documents}/Examples ${documents}/examples)
  endif()
  file(GLOB texts ${documents}/changelog* ${share}/man/man1/*)
  run(gzip -9n ${texts})
endfunction()
package(liblayerdata1 runtime)
package(liblayerdata-dev dev)
package(layerdata program)

# Every tool takes this form for a file that belongs to the system.
file(GLOB files ${CPACK_TEMPORARY_DIRECTORY}/dev/usr/lib/*/pkgconfig/*.pc)
foreach(file IN LISTS files)
  file(READ ${file} text)
  string(REGEX REPLACE "^prefix=[^\n]*" "prefix=/usr" text "${text}")
  file(WRITE ${file} "${text}")
endforeach()

# -- Symbols and dependencies --

list(TRANSFORM libraries PREPEND -e OUTPUT_VARIABLE options)
run(dpkg-gensymbols -c4 -pliblayerdata1 -v${version} -I${CPACK_DEBIAN_FOLDER}/symbols ${options} -O${symbols})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${symbols} ${CPACK_DEBIAN_FOLDER}/shlibs ${CPACK_DEBIAN_FOLDER}/triggers)

# depend(COMPONENT FILE...): on the packages of the libraries that these files load.
macro(depend component)
  list(GET libraries 0 folder)
  cmake_path(GET folder PARENT_PATH folder)
  run(dpkg-shlibdeps -O -l${folder} ${ARGN})
  string(REGEX REPLACE "^.*Depends=|\n" "" CPACK_DEBIAN_${component}_PACKAGE_DEPENDS "${output}")
endmacro()
depend(RUNTIME ${libraries})
depend(PROGRAM ${CPACK_TEMPORARY_DIRECTORY}/program/usr/bin/layerdata)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "liblayerdata1 (= ${version})")
