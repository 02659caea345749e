"""Nothing the library hands out is kept: repeated queries and space operations do not grow the
process."""

import gc

import pytest
import transspace
from transspace import Space, Value


def resident_kib():
    with open("/proc/self/status") as status:
        for line in status:
            if line.startswith("VmRSS:"):
                return int(line.split()[1])
    raise RuntimeError("no VmRSS")


def grows(work, rounds=10_000, warm_up=1_000):
    """The growth of resident memory (KiB) over `rounds` calls of work(i), after `warm_up` calls."""
    for i in range(warm_up):
        work(i)
    gc.collect()
    before = resident_kib()
    for i in range(rounds):
        work(i)
    gc.collect()
    return resident_kib() - before


def test_ten_thousand_queries_do_not_grow_memory(demo):
    names = demo.query("/dictionary", "variable/@name")

    def work(i):
        name = names[i % len(names)]
        assert demo.query_string("/dictionary", f"variable[@name='{name}']/@name") == name
        assert demo.query("/dictionary", "variable/@name") == names
        assert demo.query_number("/dictionary", "@rowCount") == 4.0

    assert grows(work) < 1024


def test_failing_and_malformed_queries_do_not_grow_memory(demo):
    def work(i):
        with pytest.raises(transspace.NoResult):
            demo.query("/nowhere", "x")
        assert demo.query_string("/nowhere", "x", default=None) is None
        with pytest.raises(transspace.XPathError):
            demo.query("/dictionary", "x[")

    assert grows(work, rounds=2_000, warm_up=200) < 1024


def test_values_and_spaces_do_not_grow_memory(sample):
    space = Space()

    def work(i):
        space["text"] = f"Größe {i}"
        space["doc"] = Value(sample)
        assert space["TEXT"].text == f"Größe {i}"
        assert space["doc"].xml
        space.add_image("g", "a", b"x" * 100, "t", i)
        assert space.image("g", "a").number == i
        space.remove_image("g", "a")
        del space["text"]
        space.remove_all("doc")

    assert grows(work, rounds=2_000, warm_up=200) < 1024
