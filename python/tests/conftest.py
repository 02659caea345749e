"""Shared set-up of the Python module's tests: where the sources, the fixtures and the command-line
tool are. CTest passes them in the environment; run by hand, the defaults fit a build in build/."""

import os
import pathlib
import subprocess

import pytest

SOURCE_DIR = pathlib.Path(os.environ.get("TRANSSPACE_SOURCE_DIR", pathlib.Path(__file__).resolve().parents[2]))
BUILD_DIR = pathlib.Path(os.environ.get("TRANSSPACE_BUILD_DIR", SOURCE_DIR / "build"))
CLI = pathlib.Path(os.environ.get("TRANSSPACE_CLI", BUILD_DIR / "tools" / "transspace" / "transspace"))
DEMO = SOURCE_DIR / "examples" / "data" / "demo.sav"


def system_files():
    """Every .sav and .zsav fixture of the repository's test data, wherever it is filed."""
    data = SOURCE_DIR / "tests" / "data"
    return sorted(p for p in data.rglob("*") if p.suffix.lower() in (".sav", ".zsav"))


def run_cli(*arguments):
    """Runs the command-line tool; returns (exit status, standard output, standard error)."""
    done = subprocess.run([str(CLI), *map(str, arguments)], capture_output=True, check=False)
    return done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8", "backslashreplace")


@pytest.fixture(scope="session")
def demo():
    import transspace

    return transspace.read_dictionary(DEMO)


# A small document with the shapes the query tests need: several nodes, attributes, text, numbers.
SAMPLE_XML = (
    "<?xml version='1.0' encoding='UTF-8'?>"
    "<root version='2'>"
    "<item name='a' size='1.5'>first</item>"
    "<item name='b' size='2'>second</item>"
    "<item name='c' size='x'>third</item>"
    "<empty/>"
    "</root>"
)


@pytest.fixture
def sample():
    import transspace

    return transspace.Value.from_xml(SAMPLE_XML)
