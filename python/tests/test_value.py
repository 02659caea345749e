"""transspace.Value: constructors, kinds, the text, number and XML views, copies."""

import math

import pytest
import transspace
from transspace import NO_NUMBER, NoResult, Value


def test_default_and_none_make_the_null_value_which_has_no_view():
    for value in (Value(), Value(None)):
        assert value.kind == "null"
        for view in ("text", "number", "xml"):
            with pytest.raises(NoResult, match="null value has no"):
                getattr(value, view)


def test_numbers_from_float_and_int():
    assert Value(2.5).kind == "number"
    assert Value(2.5).number == 2.5
    assert Value(7).number == 7.0
    assert Value(True).number == 1.0
    assert Value(2.5).text == "2.5"
    assert Value(1234567.891).text == "1234567.891"
    assert Value(0.12345).text == "0.123"
    with pytest.raises(NoResult, match="number value has no XML form"):
        Value(1.0).xml


def test_an_int_too_large_for_a_float_is_refused():
    with pytest.raises(OverflowError):
        Value(10**400)


def test_special_floats_cross_unchanged():
    assert math.isnan(Value(math.nan).number)
    assert Value(-math.inf).number == -math.inf
    # The library's no-number value held by a number value is still returned (with a warning only).
    assert Value(NO_NUMBER).number == NO_NUMBER


def test_texts_and_their_number_view():
    assert Value("12").kind == "text"
    assert Value("12").text == "12"
    assert Value("12").number == 12.0
    assert Value("").text == ""
    with pytest.raises(NoResult, match="text value has no number"):
        Value("abc").number
    with pytest.raises(NoResult):
        Value("").number
    with pytest.raises(NoResult, match="text value has no XML form"):
        Value("<a/>").xml


@pytest.mark.parametrize(
    "text",
    ["Grüße aus Köln", "Ελληνικά", "日本語のラベル", "emoji 😀 and 𝄞", "İstanbul ı", "tab\tand\nnewline",
     "\u00a0nbsp"],
)
def test_non_ascii_texts_round_trip(text):
    assert Value(text).text == text


def test_texts_with_nul_or_lone_surrogates_are_refused():
    with pytest.raises(ValueError, match="NUL"):
        Value("a\0b")
    with pytest.raises(UnicodeEncodeError):
        Value("lone \ud800 surrogate")


def test_other_types_are_refused_with_a_clear_message():
    for bad in (b"bytes", [1], object()):
        with pytest.raises(TypeError, match="a value is made from None, a float, an int, a str or a Value"):
            Value(bad)


def test_copy_of_a_value_is_independent(sample):
    copy = Value(sample)
    assert copy.kind == "document"
    del sample
    assert copy.query("/root", "item/@name") == ["a", "b", "c"]
    assert Value(Value("x")).text == "x"


def test_xml_view_of_a_document(sample):
    xml = sample.xml
    assert xml.startswith("<?xml version=\"1.0\" encoding=\"UTF-8\"")
    assert "<item name=\"a\" size=\"1.5\">first</item>" in xml
    assert "\n" not in xml
    # The text view of a document is its XML text as well.
    assert sample.text == xml
    with pytest.raises(NoResult, match="document value has no number"):
        sample.number


def test_from_xml_takes_str_and_bytes_with_their_encoding():
    text = "<?xml version='1.0'?><a label='Grüße 😀'>日本</a>"
    from_str = Value.from_xml(text)
    assert from_str.query_string("/a", "@label") == "Grüße 😀"
    assert from_str.query_string("/a", "text()") == "日本"
    latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?><a label='Grüße'/>".encode("latin-1")
    assert Value.from_xml(latin1).query_string("/a", "@label") == "Grüße"
    utf16 = "<a label='Ελληνικά'/>".encode("utf-16")
    assert Value.from_xml(utf16).query_string("/a", "@label") == "Ελληνικά"
    assert Value.from_xml(bytearray(b"<a x='1'/>")).query_number("/a", "@x") == 1.0


def test_from_xml_refuses_what_is_not_a_well_formed_document():
    for bad in ("", "<a>", "<a></b>", "not xml", b"\xff\xfe\x00"):
        with pytest.raises(transspace.XMLError):
            Value.from_xml(bad)
    with pytest.raises(TypeError):
        Value.from_xml(12)


def test_from_xml_fetches_nothing_from_outside(tmp_path):
    secret = tmp_path / "secret.txt"
    secret.write_text("secret")
    document = f"<!DOCTYPE a [<!ENTITY e SYSTEM '{secret.as_uri()}'>]><a>&e;</a>"
    with pytest.raises(transspace.XMLError, match="DOCTYPE"):
        Value.from_xml(document)


def test_from_xml_refuses_the_entity_expansion_bomb():
    entities = "".join(f"<!ENTITY e{i} '{f'&e{i - 1};' * 10}'>" for i in range(1, 10))
    bomb = f"<!DOCTYPE a [<!ENTITY e0 'ha'>{entities}]><a>&e9;</a>"
    with pytest.raises(transspace.XMLError, match="DOCTYPE"):
        Value.from_xml(bomb)


def test_from_xml_accepts_nesting_up_to_the_limit_and_refuses_one_level_more():
    def nested(depth):
        return "<e>" * depth + "bottom" + "</e>" * depth
    assert Value.from_xml(nested(1000)).query_string("/", "string(/)") == "bottom"
    for depth in (1001, 100_000):
        with pytest.raises(transspace.XMLError, match="nested"):
            Value.from_xml(nested(depth))


def test_from_xml_refuses_text_over_the_size_limit():
    huge = b"<a>" + b"x" * (100 * 1024 * 1024) + b"</a>"
    with pytest.raises(transspace.XMLError, match="more than the limit"):
        Value.from_xml(huge)


def test_repr_names_the_kind(sample):
    assert repr(Value(1)) == "<transspace.Value: number>"
    assert repr(sample) == "<transspace.Value: document>"


def test_every_public_name_has_a_docstring():
    for name in transspace.__all__:
        item = getattr(transspace, name)
        if isinstance(item, float):
            continue
        assert item.__doc__, name
    for cls in (transspace.Value, transspace.Space, transspace.Image):
        for attribute, member in vars(cls).items():
            if attribute.startswith("_") or not callable(getattr(member, "__get__", None)):
                continue
            assert member.__doc__, f"{cls.__name__}.{attribute}"
