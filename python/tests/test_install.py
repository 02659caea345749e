"""cmake --install puts a package that works on its own into the interpreter's site directory."""

import os
import subprocess
import sys
import sysconfig

import pytest
from conftest import BUILD_DIR, DEMO


@pytest.fixture(scope="module")
def installed(tmp_path_factory):
    root = tmp_path_factory.mktemp("destdir")
    environment = dict(os.environ, DESTDIR=str(root))
    subprocess.run(["cmake", "--install", str(BUILD_DIR), "--component", "python"], env=environment, check=True,
                   capture_output=True)
    return root


def site_dir(root):
    cache = (BUILD_DIR / "CMakeCache.txt").read_text()
    line = next(l for l in cache.splitlines() if l.startswith("TRANSSPACE_PYTHON_INSTALL_DIR:"))
    return root / line.split("=", 1)[1].lstrip("/")


def test_the_default_destination_is_the_interpreters_platform_site_directory():
    cache = (BUILD_DIR / "CMakeCache.txt").read_text()
    interpreter = next(l for l in cache.splitlines() if l.startswith("Python3_EXECUTABLE:")).split("=", 1)[1]
    if os.path.realpath(interpreter) != os.path.realpath(sys.executable):
        pytest.skip("the tests run with another interpreter than the build's")
    assert f"TRANSSPACE_PYTHON_INSTALL_DIR:PATH={sysconfig.get_path('platlib')}" in cache


def test_the_installed_package_holds_the_module_its_libraries_and_stubs(installed):
    package = site_dir(installed) / "transspace"
    files = sorted(p.name for p in package.iterdir())
    assert "__init__.py" in files and "__init__.pyi" in files and "py.typed" in files
    assert any(f.startswith("_transspace.") and f.endswith(".so") for f in files)
    for library in ("libtransspace.so.", "libtransspace_host.so.", "libtransspace_savfile.so."):
        assert any(f.startswith(library) for f in files), library


def test_the_installed_package_works_without_the_build_tree(installed, tmp_path):
    environment = {k: v for k, v in os.environ.items() if k not in ("PYTHONPATH", "LD_LIBRARY_PATH")}
    environment["PYTHONPATH"] = str(site_dir(installed))
    code = (
        "import transspace, sys\n"
        "assert transspace.__file__.startswith(sys.argv[1]), transspace.__file__\n"
        "value = transspace.read_dictionary(sys.argv[2])\n"
        "print(value.query_string('/dictionary', \"variable[@name='age']/@label\"))\n"
    )
    done = subprocess.run([sys.executable, "-c", code, str(site_dir(installed)), str(DEMO)], cwd=tmp_path,
                          env=environment, capture_output=True, text=True, check=False)
    assert done.returncode == 0, done.stderr
    assert done.stdout == "Age in years\n"


def test_the_installed_libraries_name_no_build_path(installed):
    package = site_dir(installed) / "transspace"
    for library in package.glob("*.so*"):
        dynamic = subprocess.run(["readelf", "-d", str(library)], capture_output=True, text=True, check=True).stdout
        assert str(BUILD_DIR) not in dynamic, library.name
