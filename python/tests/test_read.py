"""transspace.read_dictionary: system files into dictionary documents, warnings and errors."""

import pathlib
import warnings

import pytest
import transspace
from conftest import DEMO, system_files


def test_reads_the_demo_file(demo):
    assert demo.kind == "document"
    assert demo.query("/dictionary", "variable/@name") == [
        "id", "age", "sex", "income", "news1", "news2", "news3", "region", "wt",
    ]
    assert demo.query_string("/dictionary", "weightVariable/@name") == "wt"


def test_paths_as_str_bytes_and_path_objects():
    for path in (str(DEMO), bytes(DEMO), pathlib.Path(DEMO)):
        assert transspace.read_dictionary(path).query_number("/dictionary", "count(variable)") == 9.0


def test_reader_warnings_go_to_the_warnings_module():
    tolerated = next(p for p in system_files() if p.name == "forged-records.sav")
    with pytest.warns(transspace.ReadWarning, match=r"near offset 0x2ad: extended case count"):
        value = transspace.read_dictionary(tolerated)
    assert value.query_string("/dictionary", "@rowCount") == "3"


def test_warnings_can_be_made_errors():
    tolerated = next(p for p in system_files() if p.name == "forged-records.sav")
    with warnings.catch_warnings():
        warnings.simplefilter("error", transspace.ReadWarning)
        with pytest.raises(transspace.ReadWarning):
            transspace.read_dictionary(tolerated)


def test_a_file_without_oddities_gives_no_warning():
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        transspace.read_dictionary(DEMO)


def test_a_corrupt_file_raises_read_error_with_the_offset(tmp_path):
    truncated = tmp_path / "truncated.sav"
    truncated.write_bytes(DEMO.read_bytes()[:300])
    with pytest.raises(transspace.ReadError) as raised:
        transspace.read_dictionary(truncated)
    error = raised.value
    assert isinstance(error, ValueError) and isinstance(error, transspace.Error)
    assert error.filename == str(truncated)
    assert 0 < error.offset <= 300
    assert f"near offset {error.offset:#x}" in str(error)
    assert error.reason and error.reason in str(error)


def test_a_file_that_is_no_system_file_raises_read_error(tmp_path):
    other = tmp_path / "note.sav"
    other.write_bytes(b"just some text, not a system file")
    with pytest.raises(transspace.ReadError) as raised:
        transspace.read_dictionary(other)
    assert raised.value.offset == 0


def test_files_that_cannot_be_opened_raise_os_errors(tmp_path):
    with pytest.raises(FileNotFoundError) as raised:
        transspace.read_dictionary(tmp_path / "missing.sav")
    assert raised.value.filename == tmp_path / "missing.sav"
    with pytest.raises(IsADirectoryError):
        transspace.read_dictionary(tmp_path)
    with pytest.raises(ValueError, match="NUL"):
        transspace.read_dictionary("a\0b.sav")
    with pytest.raises(TypeError):
        transspace.read_dictionary(12)


def test_non_ascii_file_names(tmp_path):
    named = tmp_path / "Umfrage-größe-😀.sav"
    named.write_bytes(DEMO.read_bytes())
    assert transspace.read_dictionary(named).query_string("/dictionary", "@rowCount") == "4"
