"""Builds the extension transspace._transspace with the project's CMake build and installs the
package (module, stubs, the libraries it needs) into the wheel's tree; see pyproject.toml."""

import os
import pathlib
import re
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

SOURCE = pathlib.Path(__file__).resolve().parent
# The project's version, as CMake has it.
VERSION = re.search(r"project\(transspace VERSION ([0-9.]+)", (SOURCE / "CMakeLists.txt").read_text()).group(1)


class CMakeBuild(build_ext):
    def build_extension(self, ext):
        build = pathlib.Path(self.build_temp).resolve() / "cmake"
        # cmake --install puts the package directory into the directory that holds it.
        destination = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent.parent
        configure = [
            "cmake", "-S", str(SOURCE), "-B", str(build), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
            "-DTRANSSPACE_TESTS=OFF", "-DTRANSSPACE_PYTHON=ON",
            f"-DPython3_EXECUTABLE={sys.executable}",
            f"-DTRANSSPACE_PYTHON_INSTALL_DIR={destination}",
        ]
        subprocess.run(configure, check=True)
        subprocess.run(["cmake", "--build", str(build), "--target", "_transspace", "-j", str(os.cpu_count() or 1)],
                       check=True)
        subprocess.run(["cmake", "--install", str(build), "--component", "python"], check=True)


setup(
    version=VERSION,
    packages=["transspace"],
    package_dir={"": "python"},
    package_data={"transspace": ["__init__.pyi", "py.typed"]},
    ext_modules=[Extension("transspace._transspace", sources=[])],
    cmdclass={"build_ext": CMakeBuild},
    # Beside CMake's build/, not in it.
    options={"build": {"build_base": "build-python"}},
    zip_safe=False,
)
