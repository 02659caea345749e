"""transspace.Space: the mapping of names to values and the image store."""

import gc

import pytest
import transspace
from transspace import Space, Value


@pytest.fixture
def space():
    return Space()


def test_plain_python_values_are_stored_as_values(space):
    space["n"] = 2.5
    space["i"] = 3
    space["t"] = "Grüße 😀"
    space["z"] = None
    assert space["n"].number == 2.5
    assert space["i"].number == 3.0
    assert space["t"].text == "Grüße 😀"
    assert space["z"].kind == "null"
    with pytest.raises(TypeError):
        space["bad"] = [1, 2]
    assert "bad" not in space


def test_names_ignore_letter_case_and_blanks_at_either_end(space):
    space["  Age  "] = 1.0
    assert space["age"].number == 1.0
    assert space["AGE"].number == 1.0
    assert "aGe" in space
    assert space.names() == ["Age"]


def test_names_come_in_ascending_order_ignoring_case_as_first_stored(space):
    for name in ("beta", "Alpha", "gamma", "ALPHA2"):
        space[name] = None
    assert space.names() == ["Alpha", "ALPHA2", "beta", "gamma"]
    assert list(space) == space.names() == space.keys()
    assert len(space) == 4


def test_an_empty_space(space):
    assert len(space) == 0
    assert space.names() == []
    assert list(space) == []
    assert repr(space) == "<transspace.Space of 0 values>"


def test_a_duplicate_name_raises_and_keeps_the_first_value(space):
    space["x"] = 1.0
    with pytest.raises(ValueError, match="already in the space"):
        space["X "] = 2.0
    assert space["x"].number == 1.0
    assert len(space) == 1


def test_an_empty_or_blank_name_raises_and_stores_nothing(space):
    for name in ("", "   ", "\t\n"):
        with pytest.raises(ValueError, match="empty or blank"):
            space[name] = 1.0
        with pytest.raises(KeyError):
            space[name]
        with pytest.raises(KeyError):
            del space[name]
        assert name not in space
    assert len(space) == 0


def test_missing_names_raise_key_error(space):
    with pytest.raises(KeyError) as raised:
        space["absent"]
    assert raised.value.args == ("absent",)
    with pytest.raises(KeyError):
        del space["absent"]
    assert space.get("absent") is None
    assert space.get("absent", 5) == 5
    assert 5 not in space


def test_names_must_be_str(space):
    with pytest.raises(TypeError, match="a name must be a str"):
        space[1] = 1.0
    with pytest.raises(TypeError):
        space[b"x"]


def test_del_removes_and_a_later_store_under_the_name_works(space):
    space["x"] = 1.0
    del space["X"]
    assert "x" not in space
    space["x"] = 2.0
    assert space["x"].number == 2.0


def test_non_ascii_names_round_trip(space):
    names = ["größe", "Город", "日本", "emoji😀"]
    for name in names:
        space[name] = name
    for name in names:
        assert space[name].text == name
    assert sorted(space.names()) == sorted(names)
    # Names compare upper-cased with the full Unicode mapping: ß becomes SS.
    assert "GRÖSSE" in space
    assert "город" in space


def test_a_value_read_from_the_space_survives_del_and_the_space(space, sample):
    space["doc"] = Value.from_xml("<a x='1'/>")
    held = space["doc"]
    del space["doc"]
    assert held.query_string("/a", "@x") == "1"
    other = Space()
    other["doc"] = sample
    kept = other["DOC"]
    del other
    gc.collect()
    assert kept.query("/root", "item/@name") == ["a", "b", "c"]


def test_a_value_moves_into_the_first_space_and_is_copied_into_the_next(space, sample):
    space["one"] = sample
    assert space["one"].query("/root", "@version") == ["2"]
    assert sample.query("/root", "@version") == ["2"]
    space["two"] = sample  # already in a space: a copy
    del space["one"]
    assert space["two"].query("/root", "@version") == ["2"]
    assert sample.query("/root", "@version") == ["2"]
    other = Space()
    other["three"] = space["two"]
    del space["two"]
    assert other["three"].query("/root", "@version") == ["2"]


def test_remove_all_removes_the_value_and_the_image_group(space):
    space["g"] = 1.0
    space.add_image("G", "a", b"\x00\x01")
    assert space.remove_all("g") is True
    assert "g" not in space
    assert not space.has_image("g", "a")
    space.add_image("H", "a", b"")
    assert space.remove_all("h") is False  # no value of that name, yet the group goes
    assert not space.has_image("H", "a")


def test_images_are_stored_and_copied_out(space):
    space.add_image("Group", "Chart", b"\x89PNG\x00\xff", "Größe", -7)
    image = space.image("GROUP", "Chart")
    assert (image.name, image.data, image.text, image.number) == ("Chart", b"\x89PNG\x00\xff", "Größe", -7)
    assert "Chart" in repr(image)
    defaults = space.image("group", "Chart")
    assert defaults.number == -7


def test_image_names_are_case_sensitive_and_trimmed(space):
    space.add_image("g", " A ", b"1")
    assert space.has_image("g", "A")
    assert space.image("g", "A").data == b"1"
    assert not space.has_image("g", "a")
    with pytest.raises(KeyError):
        space.image("g", "a")


def test_duplicate_images_the_first_is_found_and_removed_first(space):
    space.add_image("g", "a", b"first")
    space.add_image("g", "a", b"second")
    assert space.image("g", "a").data == b"first"
    space.remove_image("g", "a")
    assert space.image("g", "a").data == b"second"


def test_missing_images_raise_key_error(space):
    with pytest.raises(KeyError):
        space.image("nogroup", "a")
    space.add_image("g", "a", b"")
    with pytest.raises(KeyError):
        space.image("g", "b")
    with pytest.raises(KeyError):
        space.remove_image("g", "b")
    space.remove_image("g", "a")
    assert not space.has_image("g", "a")
    with pytest.raises(KeyError):
        space.image("g", "a")


def test_an_image_group_must_have_a_name_and_numbers_fit_32_bits(space):
    with pytest.raises(ValueError, match="empty or blank"):
        space.add_image("  ", "a", b"")
    with pytest.raises(ValueError, match="32 bits"):
        space.add_image("g", "a", b"", number=2**31)
    with pytest.raises(TypeError):
        space.add_image("g", "a", "not bytes")
    assert not space.has_image("g", "a")
    space.add_image("g", "", b"")  # the image's own name is not checked


def test_images_and_values_are_apart(space):
    space.add_image("x", "a", b"")
    assert "x" not in space
    assert len(space) == 0
