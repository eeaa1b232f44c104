"""Builds the sources around this recipe: conan create Packaging/conan --build=missing"""
import os
import re

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class LayerDataRecipe(ConanFile):
    name = "layerdata"
    description = "Data types for applications that edit map layers and their attribute tables"
    license = "Apache-2.0"
    package_type = "shared-library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"program": [True, False]}
    default_options = {"program": False}

    @property
    def _sources(self):
        return os.path.join(self.recipe_folder, "..", "..")

    def set_version(self):
        project = load(self, os.path.join(self._sources, "CMakeLists.txt"))
        self.version = re.search(r"VERSION (\d+\.\d+\.\d+)", project)[1]

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "CHANGELOG.md", "LICENSE", "THIRD-PARTY-NOTICES.md", "cmake/*", "Debuggers/*",
                        "Docs/Guides/*", "Examples/*", "Include/*", "Programs/*", "Source/*"):
            copy(self, pattern, self._sources, self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def validate(self):
        if self.settings.os not in ("Linux", "Windows") or self.settings.arch != "x86_64":
            raise ConanInvalidConfiguration("LayerData is for 64-bit Linux and Windows.")
        if self.settings.compiler not in ("gcc", "clang"):
            raise ConanInvalidConfiguration("LayerData is built with GCC (on Windows MinGW-w64) or Clang.")

    def requirements(self):
        self.requires("rapidjson/cci.20230929", visible=False)
        self.requires("rapidxml/1.13", visible=False)
        if self.settings.os == "Linux":
            self.requires("openssl/[>=3 <4]")
        if self.options.program:
            self.requires("cli11/2.4.2", visible=False)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["LAYERDATA_BUILD_EXAMPLES"] = False
        toolchain.cache_variables["LAYERDATA_BUILD_PROGRAMS"] = bool(self.options.program)
        toolchain.cache_variables["LAYERDATA_BUILD_TESTS"] = False
        toolchain.cache_variables["LAYERDATA_BUNDLE_RUNTIME"] = False
        for package, folder in (("rapidjson", "rapidjson"), ("rapidxml", "rapidxml"), ("cli11", "CLI")):
            if package in self.dependencies:
                toolchain.cache_variables[f"LAYERDATA_{folder}_INCLUDE_DIR"] = self._headers(package, folder)
        toolchain.generate()
        CMakeDeps(self).generate()

    def _headers(self, package, folder):
        """The folder of the package in which the folder of its headers stands."""
        folders = self.dependencies[package].cpp_info.aggregated_components().includedirs
        return next(f for f in folders if os.path.isdir(os.path.join(f, folder))).replace("\\", "/")

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        for file in ("LICENSE", "THIRD-PARTY-NOTICES.md"):
            copy(self, file, self.source_folder, os.path.join(self.package_folder, "licenses"))

    def package_info(self):
        self.cpp_info.set_property("cmake_find_mode", "none")  # the package brings its own files for CMake
        self.cpp_info.builddirs = ["lib/cmake/LayerData"]
        self.cpp_info.includedirs = [f"include/layerdata-{self.version.split('.')[0]}"]
        self.cpp_info.libs = ["layerdata-c", "layerdata"]
