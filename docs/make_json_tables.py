#!/usr/bin/env python3
"""Makes the sections of json.md that describe objects, from the JSON Schema that the build makes.

    docs/make_json_tables.py SCHEMA            writes them
    docs/make_json_tables.py SCHEMA --check    only says whether they are what they would become, and fails if not
"""

import json
import sys
from pathlib import Path

from generated import words, write_or_check

PAGE = Path(__file__).resolve().parent / "json.md"
FIRST = "\n### "
HEAD = "| key | value | default | meaning |\n|---|---|---|---|\n"
SIMPLE = {"boolean": "truth value", "string": "text", "null": "`null`", "integer": "a number"}


def value_of(schema):
    if "$ref" in schema:
        return schema["$ref"].rpartition("/")[2]
    if "anyOf" in schema:
        return " or ".join(value_of(one) for one in schema["anyOf"])
    if "enum" in schema:
        return words(schema["enum"])
    if "items" in schema:
        return f"list of {value_of(schema['items'])}"
    if "patternProperties" in schema:
        (held,) = schema["patternProperties"].values()
        return f"table of {value_of(held)}"
    return SIMPLE[schema["type"]]


def default_of(schema):
    if "default" not in schema:
        return ""
    default = schema["default"]
    if default in ("", [], {}):
        return "empty"
    if default is None or isinstance(default, str):
        return words([default or "null"])
    return f"{default:g}" if isinstance(default, float) else json.dumps(default)


def section(name, schema):
    rows = [f"| `{key}` | {value_of(member)} | {default_of(member)} | {member.get('description', '')} |\n"
            for key, member in schema["properties"].items()]
    return f"{FIRST}{name}\n\n{HEAD}{''.join(rows)}"


def make_page(page, schema):
    objects = {name: made for name, made in schema["$defs"].items() if "properties" in made}
    return page[:page.index(FIRST)] + "".join(section(name, made) for name, made in objects.items())


def main():
    schema = json.loads(Path(sys.argv[1]).read_text("utf-8"))
    return write_or_check(PAGE, make_page(PAGE.read_text("utf-8"), schema))


if __name__ == "__main__":
    sys.exit(main())
