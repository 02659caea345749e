"""The value space and system-file dictionaries of libtransspace, from Python.

    import transspace
    survey = transspace.read_dictionary("survey.sav")
    survey.query_string("/dictionary", "variable[@name='age']/@label")

A Space maps case-insensitive names to Values; a Value is null, a number, a text or an XML
document; the dictionary of a system file is a document that answers XPath queries (a context
that selects a node, and a path evaluated from it). See help(transspace.Value) and
help(transspace.Space).

Threads: every Space and every Value has a lock of its own, so they may be shared between
threads; the GIL is released while the library works (reading a file, building or querying a
document), so threads that work on different values run in parallel.
"""

from ._transspace import (
    NO_NUMBER,
    Error,
    Image,
    NoResult,
    ReadError,
    ReadWarning,
    Space,
    Value,
    XMLError,
    XPathError,
    __version__,
    read_dictionary,
)

__all__ = [
    "NO_NUMBER",
    "Error",
    "Image",
    "NoResult",
    "ReadError",
    "ReadWarning",
    "Space",
    "Value",
    "XMLError",
    "XPathError",
    "read_dictionary",
]
