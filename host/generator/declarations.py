"""Reads the headers of the host interfaces into values.

The headers use little of C++: doc comments, includes, forward declarations, and structs of pure virtual functions
with a protected destructor. Whatever goes beyond that is refused with its file and line, because a declaration
that this module misread would move slots.
"""

import re
from dataclasses import dataclass

ROOT = "IHostObject"
TEXT = "IHostString"
SESSIONS = ("IEditSession", "IQuerySession")
PRIVATE = "Private"

NUMBERS = ("bool", "float", "double", "kelcore::int32", "kelcore::uint32", "kelcore::int64", "kelcore::uint64")
_POINTEES = ("char", "kelcore::byte", "kelcore::char16")
_INTERFACE = r"I[A-Z]\w*"

_NAMED = "|".join(NUMBERS + _POINTEES) + "|" + _INTERFACE
_TYPE = rf"(?:const )?(?:{_NAMED})(?:\*(?: const(?=\*))?)*&?"
_RESULT = rf"void|(?:{'|'.join(NUMBERS)})|(?:const )?(?:{_NAMED})\*"
_UNUSED = re.compile(r"UnusedSlot(\d+)")


class Refusal(Exception):
    """A header, or the page, is not as it has to be; the message says where and why."""


@dataclass(frozen=True)
class Place:
    header: str
    line: int

    def refuse(self, problem):
        raise Refusal(f"{self.header}:{self.line}: {problem}")


@dataclass(frozen=True)
class Parameter:
    type: str
    name: str

    def __str__(self):
        return f"{self.type} {self.name}"


@dataclass(frozen=True)
class Operation:
    result: str
    name: str
    parameters: tuple
    comment: str
    place: Place

    @property
    def is_unused(self):
        return _UNUSED.fullmatch(self.name) is not None

    @property
    def returned_interface(self):
        """The interface of the object that the operation returns, or None."""
        match = re.fullmatch(rf"({_INTERFACE})\*", self.result)
        return match and match[1]


@dataclass(frozen=True)
class Interface:
    name: str
    base: str | None
    comment: str
    operations: tuple
    place: Place


class Interfaces:
    """All interfaces. Headers come in the order in which a session leads to them, after those that none leads to."""

    def __init__(self, interfaces):
        self._by_name = {}
        for interface in interfaces:
            if interface.name in self._by_name:
                interface.place.refuse(f"{interface.name} is declared twice")
            self._by_name[interface.name] = interface
        for interface in interfaces:
            self._check(interface)
        self._reached = self._reach()
        self._by_name = {interface.name: interface for interface in self._in_order()}

    def __iter__(self):
        return iter(self._by_name.values())

    def __getitem__(self, name):
        return self._by_name[name]

    def __contains__(self, name):
        return name in self._by_name

    def headers(self):
        return list(dict.fromkeys(interface.place.header for interface in self))

    def whole(self, interface):
        """What an object of the interface casts to: the private interface that continues it, or itself."""
        return self._by_name.get(interface.name + PRIVATE, interface)

    def is_reached(self, interface):
        """Whether a session leads to objects of this interface, texts aside."""
        return interface.name in self._reached

    def first_slot(self, interface):
        if interface.base is None:
            return 1
        base = self[interface.base]
        return self.first_slot(base) + len(base.operations)

    def operations(self, interface):
        """Pairs of the declaring interface and the operation, in slot order, without the counting of references."""
        if interface.name == ROOT:
            return []
        return self.operations(self[interface.base]) + [(interface, each) for each in interface.operations]

    def _check(self, interface):
        if interface.base is None and interface.name != ROOT:
            interface.place.refuse(f"{interface.name} does not derive from {ROOT}")
        if interface.base is not None and interface.base not in self:
            interface.place.refuse(f"{interface.base} is declared nowhere")
        if interface.base not in (None, ROOT) and interface.name != interface.base + PRIVATE:
            interface.place.refuse(f"what continues {interface.base} has to be named {interface.base}{PRIVATE}")
        names = set()
        for slot, operation in enumerate(interface.operations, self.first_slot(interface)):
            if operation.name in names:
                operation.place.refuse(f"{interface.name} has a second {operation.name}")
            names.add(operation.name)
            self._check_operation(operation, slot)

    def _check_operation(self, operation, slot):
        unused = _UNUSED.fullmatch(operation.name)
        if unused and int(unused[1]) != slot:
            operation.place.refuse(f"{operation.name} is slot {slot}")
        if not unused and not operation.comment:
            operation.place.refuse(f"{operation.name} has no comment")
        types = [operation.result, *(parameter.type for parameter in operation.parameters)]
        for name in re.findall(rf"\b{_INTERFACE}", " ".join(types)):
            if name not in self:
                operation.place.refuse(f"{name} is declared nowhere")

    def _reach(self):
        reached = [name for name in SESSIONS if name in self]
        for name in reached:
            whole = self.whole(self[name])
            returned = [operation.returned_interface for _, operation in self.operations(whole)]
            for found in [whole.name, *returned]:
                if found not in (None, ROOT, TEXT, *reached):
                    reached.append(found)
        return reached

    def _in_order(self):
        def rank(header):
            names = [each.name for each in self if each.place.header == header]
            return min((self._reached.index(name) for name in names if name in self._reached), default=-1), header

        headers = sorted({each.place.header for each in self}, key=rank)
        return [each for header in headers for each in self if each.place.header == header]


def read_headers(paths, root):
    """The interfaces of all headers, which are known by their paths from the root of the project."""
    return Interfaces([interface for path in paths for interface in _Header(path, root).interfaces])


class _Header:
    """One header, read line by line; where the reader stands decides which lines it understands."""

    def __init__(self, path, root):
        self.interfaces = []
        self._name = path.relative_to(root).as_posix()
        self._comment = []
        self._understood = self._outside
        for self._line, statement in _statements(path.read_text("utf-8")):
            self._take(statement)
        if self._understood != self._after:
            self._place().refuse("the header ends too early")

    def _place(self):
        return Place(self._name, self._line)

    def _take(self, statement):
        if statement.startswith("///"):
            self._comment.append(statement.removeprefix("///").strip())
            return
        for pattern, action in self._understood():
            match = re.fullmatch(pattern, statement)
            if match:
                action(*match.groups())
                self._comment = []
                return
        self._place().refuse(f"not understood here: {statement}")

    def _outside(self):
        return (
            (r"#pragma once", lambda: None),
            (r'#include (?:"[\w/]+\.h"|<\w+>)', lambda: None),
            (r"namespace tses \{", lambda: self._go(self._inside)),
        )

    def _inside(self):
        return (
            (rf"struct {_INTERFACE};", lambda: None),
            (rf"struct ({_INTERFACE})(?: : ({_INTERFACE}))? \{{", self._begin),
            (r"\}  // namespace tses", lambda: self._go(self._after)),
        )

    def _in_interface(self):
        return (
            (rf"virtual ({_RESULT}) ([A-Z]\w*)\((.*)\) = 0;", self._add_operation),
            (r"protected:", lambda: self._go(self._in_protected)),
        )

    def _in_protected(self):
        return ((rf"~{self._interface}\(\) = default;", lambda: self._go(self._at_end)),)

    def _at_end(self):
        return ((r"\};", self._end),)

    def _after(self):
        return ()

    def _go(self, understood):
        self._understood = understood

    def _begin(self, name, base):
        self._interface, self._base, self._operations = name, base, []
        self._interface_comment, self._interface_place = " ".join(self._comment), self._place()
        self._go(self._in_interface)

    def _add_operation(self, result, name, parameters):
        listed = tuple(self._parameter(text) for text in parameters.split(", ") if text)
        comment = " ".join(self._comment)
        self._operations.append(Operation(result, name, listed, comment, self._place()))

    def _parameter(self, text):
        match = re.fullmatch(rf"({_TYPE}) ([a-z]\w*)", text)
        if not match:
            self._place().refuse(f"not understood as a parameter: {text}")
        return Parameter(match[1], match[2])

    def _end(self):
        if not self._operations:
            self._place().refuse(f"{self._interface} has no operation")
        self.interfaces.append(
            Interface(
                self._interface, self._base, self._interface_comment, tuple(self._operations), self._interface_place
            )
        )
        self._go(self._inside)


def _statements(text):
    """The lines that say something, each with its number; a declaration of several lines counts as its first."""
    begun, first = "", 0
    for number, line in enumerate(text.splitlines(), 1):
        line = line.strip()
        if begun:
            begun += " " + line
        elif line:
            begun, first = line, number
        if begun and (not begun.startswith("virtual ") or begun.endswith(";")):
            yield first, begun
            begun = ""
    if begun:
        yield first, begun
