"""Writes the tables of slots, which end the page of the host interfaces."""

import re

from .declarations import Refusal

START = "<!-- From here on host/generate.py writes this page. -->\n"


def with_slots(page, interfaces):
    """The page with its tables made anew; what stands before them is kept."""
    prose, start, _ = page.partition(START)
    if not start:
        raise Refusal(f"the page has no line {START.strip()}")
    headers = "".join(_header(interfaces, header) for header in interfaces.headers())
    return prose + start + headers


def _header(interfaces, header):
    tables = [_table(interfaces, each) for each in interfaces if each.place.header == header]
    return f"\n## {header}\n" + "".join(tables)


def _table(interfaces, interface):
    continues = f"Continues {interface.base}.\n\n" if interface.base else ""
    rows = [
        f"| {slot} | `{_signature(operation)}` | {_meaning(operation)} |\n"
        for slot, operation in enumerate(interface.operations, interfaces.first_slot(interface))
    ]
    heading = "| Slot | Operation | Meaning |\n|---|---|---|\n"
    return f"\n### {interface.name}\n\n{continues}{heading}" + "".join(rows)


def _signature(operation):
    parameters = ", ".join(map(str, operation.parameters))
    return f"{operation.result} {operation.name}({parameters})".replace("kelcore::", "")


def _meaning(operation):
    """The first sentence of the operation's comment."""
    if operation.is_unused:
        return "Never called"
    return re.split(r"\.(?:\s|$)", operation.comment)[0].replace("|", r"\|")
