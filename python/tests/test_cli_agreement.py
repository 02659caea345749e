"""Every .sav/.zsav fixture: the module's answers equal the command-line tool's, both being the
library's answers on the same file."""

import math
import warnings

import pytest
import transspace
from conftest import run_cli, system_files

FILES = system_files()

# (answer form, context, path): names, labels, counts over the whole dictionary, and a query from a
# variable's own node.
QUERIES = [
    ("--list", "/dictionary", "variable/@name"),
    ("--list", "/dictionary", "variable/@label"),
    ("--string", "/dictionary", "@rowCount"),
    ("--string", "/dictionary/variable[last()]", "@name"),
    ("--double", "/dictionary", "count(valueLabelSet/valueLabel)"),
    ("--double", "/dictionary", "count(//missingValue)"),
    ("--list", "/dictionary", "valueLabelSet/valueLabel/@label"),
]


def test_the_fixtures_are_found():
    assert len(FILES) >= 20


def read_quietly(path):
    with warnings.catch_warnings():
        warnings.simplefilter("ignore", transspace.ReadWarning)
        return transspace.read_dictionary(path)


def python_answer(value, form, context, path):
    if form == "--list":
        return value.query(context, path)
    if form == "--string":
        answer = value.query_string(context, path)
        return [answer] if answer else []
    answer = value.query_number(context, path)
    return [] if answer == transspace.NO_NUMBER else [answer]


def cli_answer(form, output):
    lines = output.split("\n")[:-1]
    if form == "--double":
        return [float(line) for line in lines]
    return lines


@pytest.mark.parametrize("path", FILES, ids=lambda p: f"{p.parent.name}/{p.name}")
def test_queries_agree_with_the_command_line_tool(path):
    value = read_quietly(path)
    for form, context, xpath in QUERIES:
        status, output, _ = run_cli("query", form, path, context, xpath)
        assert status in (0, 1), (form, xpath)
        expected = cli_answer(form, output)
        got = python_answer(value, form, context, xpath)
        assert got == expected, (form, xpath)
        if form == "--double" and got:
            assert not math.isnan(got[0])


@pytest.mark.parametrize("path", FILES, ids=lambda p: f"{p.parent.name}/{p.name}")
def test_the_whole_dictionary_agrees_with_the_command_line_tool(path):
    status, output, _ = run_cli("dict", path)
    assert status == 0
    assert read_quietly(path).xml == output.rstrip("\n")


def printable(text):
    """The tool shows control characters as \\xNN, so that a file cannot drive the terminal."""
    return "".join(f"\\x{ord(c):02X}" if ord(c) < 0x20 or ord(c) == 0x7F else c for c in text)


def test_warnings_agree_with_the_command_line_tool():
    for path in FILES:
        _, _, errors = run_cli("query", "--string", path, "/dictionary", "@rowCount")
        prefix = "transspace: warning: "
        expected = [line[len(prefix):] for line in errors.splitlines() if line.startswith(prefix)]
        with warnings.catch_warnings(record=True) as caught:
            warnings.simplefilter("always")
            transspace.read_dictionary(path)
        got = [printable(str(w.message)) for w in caught if issubclass(w.category, transspace.ReadWarning)]
        assert got == expected, path


def test_a_corrupt_file_fails_in_both(tmp_path):
    broken = tmp_path / "broken.sav"
    broken.write_bytes(b"$FL2" + b"\x00" * 100)
    status, _, errors = run_cli("dict", broken)
    assert status == 2
    with pytest.raises(transspace.ReadError) as raised:
        transspace.read_dictionary(broken)
    assert str(raised.value) in errors
