# SPDX-License-Identifier: MIT
"""The recipe for Conan 2: `conan create packaging/conan` from the root of the sources."""

import os

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, rmdir

required_conan_version = ">=2.0"


class EspalierConan(ConanFile):
    name = "espalier"
    version = "0.1.0"
    description = "An XML toolkit in one shared library"
    license = "MIT"
    topics = ("xml", "parser", "sax", "dom", "css")
    package_type = "shared-library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"tools": [True, False]}
    default_options = {"tools": False}

    def export_sources(self):
        root = os.path.join(self.recipe_folder, os.pardir, os.pardir)
        for pattern in ("CMakeLists.txt", "LICENSE", "cmake/*", "include/*", "src/*", "tools/*"):
            copy(self, pattern, src=root, dst=self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def requirements(self):
        self.requires("zlib/[>=1.2.11 <2]")
        self.requires("minizip/[>=1.2.11 <2]")
        if self.options.tools:
            self.requires("cli11/[>=2.2 <3]")
            self.requires("fmt/[>=9 <12]")

    def build_requirements(self):
        self.tool_requires("cmake/[>=3.25]")

    def validate(self):
        check_min_cppstd(self, 20)

    def generate(self):
        # The sources look for minizip by their own module, under this name.
        dependencies = CMakeDeps(self)
        dependencies.set_property("minizip", "cmake_file_name", "Minizip")
        dependencies.set_property("minizip", "cmake_target_name", "Minizip::Minizip")
        dependencies.set_property("minizip", "cmake_find_mode", "both")
        dependencies.generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables.update(self.cmake_variables())
        toolchain.generate()

    def cmake_variables(self):
        """Returns the settings of the build."""
        return {
            "ESPALIER_BUILD_TOOLS": "ON" if self.options.tools else "OFF",
            "ESPALIER_BUILD_TESTS": "OFF",
            "ESPALIER_BUILD_EXAMPLES": "OFF",
            "ESPALIER_CCACHE": "OFF",
            "ESPALIER_INSTALL": "ON",
        }

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENSE", src=self.source_folder,
             dst=os.path.join(self.package_folder, "licenses"))
        CMake(self).install()
        # Conan makes these descriptions itself.
        rmdir(self, os.path.join(self.package_folder, "lib", "cmake"))
        rmdir(self, os.path.join(self.package_folder, "lib", "pkgconfig"))

    def package_info(self):
        self.cpp_info.libs = ["espalier"]
        self.cpp_info.set_property("cmake_file_name", "espalier")
        self.cpp_info.set_property("cmake_target_name", "espalier::espalier")
        self.cpp_info.set_property("pkg_config_name", "espalier")
