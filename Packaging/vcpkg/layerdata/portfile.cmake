# Builds the sources around this port: vcpkg install layerdata --overlay-ports=Packaging/vcpkg
cmake_path(SET SOURCE_PATH NORMALIZE "${CURRENT_PORT_DIR}/../../..")

vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)
vcpkg_check_features(OUT_FEATURE_OPTIONS features FEATURES tools LAYERDATA_BUILD_PROGRAMS)
vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS
    ${features}
    -DLAYERDATA_BUILD_EXAMPLES=OFF
    -DLAYERDATA_BUILD_TESTS=OFF
    -DLAYERDATA_BUNDLE_RUNTIME=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME LayerData CONFIG_PATH lib/cmake/LayerData)
vcpkg_fixup_pkgconfig()
if("tools" IN_LIST FEATURES)
  vcpkg_copy_tools(TOOL_NAMES layerdata AUTO_CLEAN)
endif()

file(REMOVE_RECURSE
  "${CURRENT_PACKAGES_DIR}/debug/include"
  "${CURRENT_PACKAGES_DIR}/debug/share"
  "${CURRENT_PACKAGES_DIR}/share/doc")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE" "${SOURCE_PATH}/THIRD-PARTY-NOTICES.md")
