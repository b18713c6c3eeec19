"""What all C++ that is generated has in common."""

import textwrap

WIDTH = 100
NOTE = "// Made by host/generate.py from the headers of the host interfaces.\n"


def header_start(interfaces, *more):
    """The head of a header that includes all interfaces, and more, given as `"a.h"` or `<a>`."""
    includes = sorted([*(f'"{header}"' for header in interfaces.headers()), *more])
    return NOTE + "#pragma once\n\n" + "".join(f"#include {each}\n" for each in includes) + "\n"


def function(operation, parameters, ending):
    """`uint32 GetId() override { return 0; }`, over several lines where one is too short."""
    start = f"    {operation.result} {operation.name}("
    line = start + ", ".join(parameters) + ")" + ending
    if len(line) <= WIDTH:
        return line + "\n"
    if ending.startswith(" override { "):
        ending = ending.replace("{ ", "{\n        ").replace(" }", "\n    }")
    ending, newline, body = ending.partition("\n")
    lines = [""]
    for piece in (", \0".join(parameters) + ")" + ending).split("\0"):
        if len((lines[-1] + piece).rstrip()) > WIDTH - len(start):
            lines.append("")
        lines[-1] += piece
    return start + ("\n" + " " * len(start)).join(map(str.rstrip, lines)) + newline + body + "\n"


def comment(text, indent=""):
    return "".join(f"{indent}/// {line}\n" for line in textwrap.wrap(text, WIDTH - len(indent) - 4))
