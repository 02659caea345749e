"""Type stubs of the package transspace (the extension transspace._transspace re-exported)."""

import os
from typing import Iterator, Literal, TypeVar, overload

_T = TypeVar("_T")
_Plain = None | float | int | str

__version__: str

NO_NUMBER: float
"""The library's no-number value, -1.7976931348623157e308: what query_number answers when there is no number."""

class Error(Exception):
    """Base class of the errors of transspace."""

class NoResult(Error, LookupError):
    """The library reported failure: the view does not exist for this kind of value, the context
    selected no node, or the path's result cannot be answered."""

class XPathError(Error, ValueError):
    """A context or path expression that is not valid XPath; the message is the evaluator's."""

class XMLError(Error, ValueError):
    """A text or byte string that is not a well-formed XML document."""

class ReadError(Error, ValueError):
    """A file that cannot be read as a system file."""

    filename: str
    """The file as given to read_dictionary."""
    offset: int
    """The byte offset in the file where the problem was found."""
    reason: str
    """The message without the file name and offset."""

class ReadWarning(UserWarning):
    """Something odd in a system file that the reader tolerated, using a sane default."""

class Value:
    """One value of the library: null, a number (a double), a text or an XML document.

    Immutable. Views that a kind of value does not have raise NoResult."""

    def __init__(self, content: _Plain | Value = None) -> None:
        """Makes a value from None, a float, an int (stored as a float), a str or another Value (copied)."""
    @staticmethod
    def from_xml(xml: str | bytes | bytearray | memoryview) -> Value:
        """Parses an XML document (a str is handed to the parser as UTF-8; bytes carry their own
        encoding). Raises XMLError when it is not a well-formed document."""
    @property
    def kind(self) -> Literal["null", "number", "text", "document"]:
        """The kind of the value."""
    @property
    def text(self) -> str:
        """The value as text (a number formatted, a document as its XML text); NoResult for null."""
    @property
    def number(self) -> float:
        """The value as a float (a text parsed); NoResult for null, documents and texts that are no number."""
    @property
    def xml(self) -> str:
        """The XML text of a document; NoResult for the other kinds."""
    @overload
    def query(self, context: str, path: str) -> list[str]: ...
    @overload
    def query(self, context: str, path: str, *, default: _T) -> list[str] | _T: ...
    def query(self, context: str, path: str, *, default: object = ...) -> object:
        """Evaluates `context` from the document node, then `path` from the first node it selects.
        One str per selected node ([] for an empty node set). NoResult (or `default`) when there is
        no result; XPathError for a malformed expression."""
    @overload
    def query_string(self, context: str, path: str) -> str: ...
    @overload
    def query_string(self, context: str, path: str, *, default: _T) -> str | _T: ...
    def query_string(self, context: str, path: str, *, default: object = ...) -> object:
        """As query(), answering one str (the first node's value; "" for an empty node set)."""
    @overload
    def query_number(self, context: str, path: str) -> float: ...
    @overload
    def query_number(self, context: str, path: str, *, default: _T) -> float | _T: ...
    def query_number(self, context: str, path: str, *, default: object = ...) -> object:
        """As query(), answering one float (NO_NUMBER for an empty node set or a text that is no number)."""

class Image:
    """An image record as the space stores it, copied out by Space.image()."""

    @property
    def name(self) -> str: ...
    @property
    def data(self) -> bytes: ...
    @property
    def text(self) -> str: ...
    @property
    def number(self) -> int: ...

class Space:
    """A value space: a mapping of case-insensitive, trimmed names to values, and an image store."""

    def __init__(self) -> None: ...
    def __setitem__(self, name: str, value: Value | _Plain) -> None:
        """Stores a value; ValueError for a name in use or an empty one."""
    def __getitem__(self, name: str) -> Value:
        """The stored value; KeyError if none."""
    def __delitem__(self, name: str) -> None:
        """Removes the stored value; KeyError if none."""
    def __contains__(self, name: object) -> bool: ...
    def __len__(self) -> int: ...
    def __iter__(self) -> Iterator[str]: ...
    def names(self) -> list[str]:
        """The names in the space's order (ascending, ignoring letter case)."""
    def keys(self) -> list[str]:
        """The same as names()."""
    @overload
    def get(self, name: str) -> Value | None: ...
    @overload
    def get(self, name: str, default: _T) -> Value | _T: ...
    def remove_all(self, name: str) -> bool:
        """Removes the value and the image group of that name; True when a value was removed."""
    def add_image(self, group: str, name: str, data: bytes, text: str = "", number: int = 0) -> None:
        """Files an image; ValueError for an empty group name."""
    def image(self, group: str, name: str) -> Image:
        """The first image of that name in the group; KeyError if none."""
    def has_image(self, group: str, name: str) -> bool: ...
    def remove_image(self, group: str, name: str) -> None:
        """Removes the first image of that name from the group; KeyError if none."""

def read_dictionary(path: str | bytes | os.PathLike[str] | os.PathLike[bytes]) -> Value:
    """The dictionary document of a system file (.sav, .zsav). Reader warnings go to the warnings
    module (ReadWarning); ReadError for a file that is not a readable system file, OSError for
    one that cannot be opened."""
