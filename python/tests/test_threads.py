"""The module from several threads: no crash, no corrupted value, every answer right."""

import threading
import warnings

import transspace
from conftest import DEMO, system_files
from transspace import Space, Value


def run_threads(count, target):
    errors = []

    def guarded(index):
        try:
            target(index)
        except BaseException as error:  # collected and reported by the main thread
            errors.append(error)

    threads = [threading.Thread(target=guarded, args=(i,)) for i in range(count)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert errors == []


def test_many_threads_query_one_value():
    value = transspace.read_dictionary(DEMO)
    names = value.query("/dictionary", "variable/@name")

    def work(index):
        for i in range(500):
            name = names[(index + i) % len(names)]
            assert value.query_string("/dictionary", f"variable[@name='{name}']/@name") == name
            assert value.query("/dictionary", "variable/@name") == names

    run_threads(8, work)


def test_threads_read_files_and_query_their_own_values():
    files = [p for p in system_files() if p.stat().st_size < 100_000]

    def work(index):
        for path in files[index::4]:
            with warnings.catch_warnings():
                warnings.simplefilter("ignore")
                value = transspace.read_dictionary(path)
            count = value.query_number("/dictionary", "count(variable)")
            assert len(value.query("/dictionary", "variable/@name")) == count

    run_threads(4, work)


def test_threads_store_remove_and_read_one_space():
    space = Space()
    document = Value.from_xml("<a><b n='1'/><b n='2'/></a>")
    writers = 3
    writing = threading.Semaphore(0)
    done = threading.Event()

    def write(index):
        try:
            for i in range(300):
                name = f"w{index}-{i % 5}"
                if name in space:
                    del space[name]
                space[name] = Value(document) if i % 2 else f"text {i}"
        finally:
            writing.release()

    def read():
        while not done.is_set():
            for name in space.names():
                value = space.get(name)
                if value is None:
                    continue  # removed meanwhile
                if value.kind == "document":
                    assert value.query("/a", "b/@n") == ["1", "2"]
                else:
                    assert value.text.startswith("text ")

    def work(index):
        if index < writers:
            write(index)
        elif index == writers:
            for _ in range(writers):
                writing.acquire()
            done.set()
        else:
            read()

    run_threads(writers + 4, work)
    assert len(space) == 15


def test_a_value_taken_out_while_another_thread_deletes_it_stays_whole():
    for _ in range(50):
        space = Space()
        space["doc"] = Value.from_xml("<a x='1'/>")
        held = space["doc"]
        results = []

        def query(_):
            for _ in range(50):
                results.append(held.query_string("/a", "@x"))

        def remove(_):
            del space["doc"]

        threads = [threading.Thread(target=query, args=(0,)), threading.Thread(target=remove, args=(0,))]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        assert results == ["1"] * 50
