# add_header_library(TARGET HEADER): a target for a header-only package of the build machine.
# Only the package's own folder is linked into the build tree, because a cross compiler must not see
# the other headers in /usr/include.
function(add_header_library target header)
  get_filename_component(folder ${header} DIRECTORY)
  set(found LAYERDATA_${folder}_INCLUDE_DIR)
  find_path(${found} ${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(alone ${LayerData_BINARY_DIR}/headers/${target})
  file(MAKE_DIRECTORY ${alone})
  file(CREATE_LINK ${${found}}/${folder} ${alone}/${folder} COPY_ON_ERROR SYMBOLIC)
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${alone})
endfunction()
