#!/usr/bin/env python3
"""Makes the tables of format.md from what the build's `orvo-print-format` prints; their last column is written by hand.

    docs/make_tables.py PRINT_FORMAT            writes them
    docs/make_tables.py PRINT_FORMAT --check    only says whether they are what they would become, and fails if not

It also holds the sections to the tree of elements: that each element has a section, at its places and only there, with
the text that it has. The page keeps what the format cannot say, as long as it can be true: what absence means where
there is no default, and the condition under which something is written.
"""

import json
import re
import subprocess
import sys

from generated import words, write_or_check
from make_schema import ATTRIBUTE, ATTRIBUTE_TABLE, PAGE, read_sections

ABSENCE = {"empty", "none", "unchanged"}


class Mismatch(Exception):
    pass


def type_of(attribute):
    keywords = words(attribute["words"])
    return {"keyword": keywords, "keyword or u32": f"{keywords}, or u32", "keywords": f"list of {keywords}"}.get(
        attribute["kind"], attribute["kind"])


def default_of(attribute, stated):
    if attribute["isDropped"] or not attribute["isRead"]:
        return "-"
    if attribute["isAsBefore"]:
        return "that of the clip before"
    text = attribute.get("default", "")
    if text:
        return f"`{text}`"
    return stated if stated in ABSENCE else "empty"


def read_of(attribute):
    return "dropped" if attribute["isDropped"] else "yes" if attribute["isRead"] else "no"


def written_of(attribute, stated):
    certain = {"always": "always", "never": "never", "unless empty": "if not empty", "if true": "if true"}
    if attribute["written"] in certain:
        wanted = certain[attribute["written"]]
        special = wanted == "if not empty" and stated.startswith("if ")
        return stated if special else wanted
    return stated if stated == "always" or stated.startswith("if ") else "if it is there"


def row_of(attribute, stated):
    """The row of an attribute; `stated` are the columns of the page's, if it has one."""
    default, written, meaning = (stated[2], stated[4], stated[5]) if stated else ("", "", "")
    return [f"`{attribute['name']}`", type_of(attribute), default_of(attribute, default), read_of(attribute),
            written_of(attribute, written), meaning]


def cells(line):
    return [cell.strip() for cell in line.strip().strip("|").split(" | ")]


def line_of(row):
    return ("| " + " | ".join(row)).rstrip() + " |"


def tables_of(lines):
    """The rows of every section's own table, by the section's heading."""
    tables, heading = {}, None
    for line in lines:
        if line.startswith("### "):
            heading = line[4:]
            tables[heading] = {}
        elif heading and ATTRIBUTE.match(line):
            row = cells(line)
            tables[heading][row[0].strip("`")] = row + [""] * (6 - len(row))
    return tables


def place_elements(sections, elements):
    """For each section its elements: those of its names in the places of the sections that hold it."""
    placed = {anchor: [] for anchor in sections}

    def visit(anchor, found):
        new = [element for element in found if element not in placed[anchor]]
        placed[anchor] += new
        if not new:
            return
        for child in sections[anchor].children():
            for name in sections[child].names():
                here = [e for e in elements for f in new if e["name"] == name and f["state"] in e["parents"]]
                if not here and sections[child].facts["Read"] != "never":
                    raise Mismatch(f"{anchor} holds no {name}")
                visit(child, here)

    visit("orvo", elements[:1])
    for anchor, section in sections.items():
        if section.facts["Read"] != "never" and not placed[anchor]:
            raise Mismatch(f"{section.title} stands nowhere")
    for element in elements:
        if not any(element in found for found in placed.values()):
            raise Mismatch(f"{element['name']} in {element['parents']} has no section")
    return placed


def check_facts(section, element):
    text = section.facts["Text"]
    is_as_said = {"none": text == "none",
                  "plain": text != "none" and (text == "dropped") == element["isDropped"],
                  "base64": text.startswith("bytes in Base64")}
    if not is_as_said[element["text"]]:
        raise Mismatch(f"{section.title}: has not the text that it says")
    if (section.facts["Read"] == "with instrument tracks") != element["needsInstrumentTracks"]:
        raise Mismatch(f"{section.title}: is read at other times than it says")


def stated_row(section, name, sections, tables):
    """The page's row of an attribute, be it that of the section which this one is like; None without one."""
    if name in tables[section.title]:
        return tables[section.title][name]
    return stated_row(sections[section.like], name, sections, tables) if section.like else None


def rows_of(section, element, sections, tables):
    """The rows of all attributes of an element, by name: those that the page has in its order, then new ones."""
    by_name = {attribute["name"]: attribute for attribute in element["attributes"]}
    own = [name for name in tables[section.title] if name in by_name]
    order = own + [name for name in by_name if name not in own]
    return {name: row_of(by_name[name], stated_row(section, name, sections, tables)) for name in order}


def new_table(section, placed, sections, tables):
    """The rows of the section's own table: those of a section that it is like are left out where they are equal."""
    made = [rows_of(section, element, sections, tables) for element in placed[section.anchor()]]
    if any(rows != made[0] for rows in made):
        raise Mismatch(f"{section.title}: its elements differ in their attributes")
    inherited = rows_of(sections[section.like], placed[section.like][0], sections, tables) if section.like else {}
    return [row for name, row in made[0].items() if row != inherited.get(name)]


def make_page(page, elements):
    sections = read_sections(page)
    lines = page.splitlines()
    tables = tables_of(lines)
    placed = place_elements(sections, elements)
    made = {}
    for anchor, section in sections.items():
        for element in placed[anchor]:
            check_facts(section, element)
        if placed[anchor]:
            made[section.title] = new_table(section, placed, sections, tables)
    result, heading, headed = [], None, set()
    for line in lines:
        if line.startswith("### "):
            heading = line[4:]
        if heading in made and ATTRIBUTE.match(line):
            continue
        result.append(line)
        if heading in made and line.startswith("|---") and result[-2].startswith(ATTRIBUTE_TABLE):
            headed.add(heading)
            result += [line_of(row) for row in made[heading]]
    missing = [title for title, rows in made.items() if rows and title not in headed]
    if missing:
        raise Mismatch(f"no table in the sections {', '.join(missing)}")
    return "\n".join(result) + "\n"


def main():
    elements = json.loads(subprocess.run([sys.argv[1]], check=True, stdout=subprocess.PIPE).stdout)
    try:
        made = make_page(PAGE.read_text("utf-8"), elements)
    except Mismatch as mismatch:
        print(f"{PAGE}: {mismatch}")
        return 1
    return write_or_check(PAGE, made)


if __name__ == "__main__":
    sys.exit(main())
