"""XPath queries of document values: answers by result type, flags as exceptions or defaults."""

import pytest
import transspace
from transspace import NO_NUMBER, NoResult, Value, XPathError


def test_one_node_answers_its_value(sample):
    assert sample.query("/root", "@version") == ["2"]
    assert sample.query_string("/root", "@version") == "2"
    assert sample.query_number("/root", "@version") == 2.0


def test_several_nodes_give_every_value_as_a_list_and_the_first_as_one_answer(sample):
    assert sample.query("/root", "item/@name") == ["a", "b", "c"]
    assert sample.query_string("/root", "item/@name") == "a"
    assert sample.query_number("/root", "item/@size") == 1.5


def test_the_context_is_the_first_node_it_selects(sample):
    assert sample.query_string("/root/item", "@name") == "a"
    assert sample.query_string("/root/item[@name='b']", "text()") == "second"


def test_an_element_answers_its_node_value_which_is_empty(sample):
    assert sample.query("/root", "item[1]") == [""]
    assert sample.query_string("/root", "item[1]") == ""


def test_an_empty_node_set_is_the_empty_answer_not_an_error(sample):
    assert sample.query("/root", "nothing") == []
    assert sample.query_string("/root", "nothing") == ""
    assert sample.query_number("/root", "nothing") == NO_NUMBER


def test_strings_numbers_and_booleans(sample):
    assert sample.query("/root", "count(item)") == ["3"]
    assert sample.query_number("/root", "count(item)") == 3.0
    assert sample.query_string("/root", "concat('x', @version)") == "x2"
    assert sample.query_number("/root", "count(item) > 2") == 1.0
    assert sample.query_number("/root", "count(item) > 5") == 0.0
    assert sample.query_string("/root", "count(item) > 2") == "true"
    assert sample.query("/root", "count(item) > 5") == ["false"]


def test_a_text_that_is_no_number_gives_the_no_number_value(sample):
    assert sample.query_number("/root", "item[3]/@size") == NO_NUMBER
    assert sample.query_number("/root", "'abc'") == NO_NUMBER


def test_a_context_that_selects_nothing_raises_no_result_or_gives_the_default(sample):
    with pytest.raises(NoResult, match="context '/nowhere'"):
        sample.query("/nowhere", "@x")
    with pytest.raises(NoResult):
        sample.query_string("/nowhere", "@x")
    with pytest.raises(NoResult):
        sample.query_number("/nowhere", "@x")
    assert sample.query("/nowhere", "@x", default=None) is None
    assert sample.query_string("/nowhere", "@x", default="n/a") == "n/a"
    assert sample.query_number("/nowhere", "@x", default=-1) == -1
    marker = object()
    assert sample.query("/nowhere", "@x", default=marker) is marker


def test_empty_or_blank_expressions_are_no_result(sample):
    for context, path in (("", "@x"), ("  ", "@x"), ("/root", ""), ("/root", " \t ")):
        with pytest.raises(NoResult):
            sample.query(context, path)
        assert sample.query_string(context, path, default=None) is None


def test_no_result_is_a_lookup_error_and_a_transspace_error(sample):
    with pytest.raises(LookupError):
        sample.query("/nowhere", "x")
    with pytest.raises(transspace.Error):
        sample.query("/nowhere", "x")


def test_malformed_expressions_raise_xpath_error_with_the_evaluators_message(sample):
    with pytest.raises(XPathError, match="Expected"):
        sample.query("/root[", "@x")
    with pytest.raises(XPathError, match="Expected"):
        sample.query_string("/root", "item[")
    with pytest.raises(XPathError):
        sample.query_number("/root", "1 +", default=0)
    with pytest.raises(ValueError):
        sample.query("/root", "item[")
    # The value answers as before after a malformed query.
    assert sample.query("/root", "item/@name") == ["a", "b", "c"]


def test_values_that_are_no_document_answer_no_query():
    for value in (Value(), Value(1.0), Value("text")):
        with pytest.raises(NoResult, match="answers no XPath query"):
            value.query("/a", "b")
        assert value.query_string("/a", "b", default="d") == "d"
        assert value.query_number("/a", "b[", default=0.0) == 0.0


def test_non_ascii_expressions_and_answers():
    value = Value.from_xml("<Wörter><wort name='größe' label='Größe in cm 📏'/>"
                           "<wort name='город' label='Город'/></Wörter>")
    assert value.query_string("/Wörter", "wort[@name='größe']/@label") == "Größe in cm 📏"
    assert value.query("/Wörter", "wort[@name='город']/@label") == ["Город"]


def test_arguments_must_be_str(sample):
    with pytest.raises(TypeError, match="context must be a str"):
        sample.query(b"/root", "@x")
    with pytest.raises(TypeError, match="path must be a str"):
        sample.query_string("/root", None)
    with pytest.raises(TypeError):
        sample.query("/root", "@x", None)  # default is keyword-only


def test_dictionary_queries(demo):
    assert demo.query_string("/dictionary", "@rowCount") == "4"
    assert demo.query_string("/dictionary", "variable[@name='age']/@label") == "Age in years"
    labels = demo.query("/dictionary", "valueLabelSet[valueLabelVariable/@name='sex']/valueLabel/@label")
    assert labels == ["female", "male"]
