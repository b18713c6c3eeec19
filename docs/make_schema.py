#!/usr/bin/env python3
"""Makes orvo.xsd from the sections of format.md.

    docs/make_schema.py            writes it
    docs/make_schema.py --check    only says whether it is what it would become, and fails if it is not

The schema accepts children in any order and number and every value as text. Names are all that it checks:
every section of the page is a type, with the attributes of its tables and the elements that it holds.
"""

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

from generated import write_or_check

DOCS = Path(__file__).resolve().parent
PAGE = DOCS / "format.md"
SCHEMA = DOCS / "orvo.xsd"

HEADING = re.compile(r"### (`.*)")
NAME = re.compile(r"`(\w+)`")
LINK = re.compile(r"\]\(#([\w-]+)\)")
FACT = re.compile(r"- \*\*(\w+):\*\* (.*)")
ATTRIBUTE_TABLE = "| Attribute |"
ATTRIBUTE = re.compile(r"\| `(\w+)` \|")
SAME_ATTRIBUTES = re.compile(r"Attributes: those of .*\]\(#([\w-]+)\)\.")

HEAD = """<?xml version="1.0" encoding="UTF-8"?>
<!-- Made by make_schema.py from format.md, which says what the names mean. -->
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
  <xs:element name="orvo" type="orvo"/>
"""

# An element whose type is empty may not even have a line end between its tags.
BLANK = """  <xs:simpleType name="blank">
    <xs:restriction base="xs:token">
      <xs:length value="0"/>
    </xs:restriction>
  </xs:simpleType>
</xs:schema>
"""


@dataclass
class Section:
    title: str
    facts: dict = field(default_factory=dict)
    attributes: list = field(default_factory=list)
    like: str = ""

    def anchor(self):
        return re.sub(r"[`,]", "", self.title.lower()).replace(" ", "-")

    def names(self):
        return NAME.findall(self.title)

    def children(self):
        return LINK.findall(self.facts["Holds"])

    def has_text(self):
        return self.facts["Text"] != "none"

    def holds_anything(self):
        return self.facts["Holds"] == "anything"


def read_sections(page):
    sections, table = [], False
    for line in page.splitlines():
        if heading := HEADING.fullmatch(line):
            sections.append(Section(heading[1]))
        if not sections:
            continue
        if fact := FACT.fullmatch(line):
            sections[-1].facts[fact[1]] = fact[2]
        if like := SAME_ATTRIBUTES.fullmatch(line):
            sections[-1].like = like[1]
        table = line.startswith(ATTRIBUTE_TABLE) or (table and line.startswith("|"))
        if table and (row := ATTRIBUTE.match(line)):
            sections[-1].attributes.append(row[1])
    return {section.anchor(): section for section in sections}


def attributes_of(section, sections):
    inherited = attributes_of(sections[section.like], sections) if section.like else set()
    return inherited | set(section.attributes)


def attribute_lines(section, sections):
    return [f'<xs:attribute name="{name}" type="xs:string"/>' for name in sorted(attributes_of(section, sections))]


def anything_lines():
    yield "<xs:sequence>"
    yield '  <xs:any minOccurs="0" maxOccurs="unbounded" processContents="skip"/>'
    yield "</xs:sequence>"
    yield '<xs:anyAttribute processContents="skip"/>'


def children_lines(section, sections):
    yield '<xs:choice minOccurs="0" maxOccurs="unbounded">'
    for child in section.children():
        for name in sections[child].names():
            yield f'  <xs:element name="{name}" type="{child}"/>'
    yield "</xs:choice>"


def blank_lines(section, sections):
    yield "<xs:simpleContent>"
    yield '  <xs:extension base="blank">'
    yield from ("    " + line for line in attribute_lines(section, sections))
    yield "  </xs:extension>"
    yield "</xs:simpleContent>"


def content_lines(section, sections):
    if section.holds_anything():
        return [*anything_lines()]
    if section.children():
        return [*children_lines(section, sections), *attribute_lines(section, sections)]
    if section.has_text():
        return attribute_lines(section, sections)
    return [*blank_lines(section, sections)]


def type_lines(section, sections):
    mixed = ' mixed="true"' if section.has_text() else ""
    yield f'  <xs:complexType name="{section.anchor()}"{mixed}>'
    yield from ("    " + line for line in content_lines(section, sections))
    yield "  </xs:complexType>"


def make_schema(page):
    sections = read_sections(page)
    types = [line for section in sections.values() for line in type_lines(section, sections)]
    return HEAD + "\n".join(types) + "\n" + BLANK


def main():
    return write_or_check(SCHEMA, make_schema(PAGE.read_text("utf-8")))


if __name__ == "__main__":
    sys.exit(main())
