"""Decides whether a document is well-formed from the verdicts of expat and libxml2, and knows why they
may differ.

Each class has a narrow rule. If one of the two is more or less strict than XML 1.0 with namespaces,
the other decides alone; if neither can tell, the document is set aside.
"""

import re
import xml.parsers.expat

GUARD = "set aside: refused by our own guards"
XML_1_1 = "set aside: characters that differ in XML 1.1, which the others do not know"
ENCODING = "set aside: an encoding that expat does not know"
CONTRADICTION = "set aside: the declaration contradicts the bytes"
VERSION = "must be refused: an invalid version, which the others accept"
UNMARKED = "must be refused: UTF-16 with neither a byte order mark nor a declaration, which the others accept"
NAMESPACE = "judged by expat alone: a namespace that is not a URI, which libxml2 refuses"
XML_ID = "judged by expat alone: an xml:id that is not a name, which libxml2 refuses"
NAME = "judged by libxml2 alone: a name that only the fifth edition of XML allows, which expat refuses"
NUL = "judged by expat alone: a NUL character, which libxml2 accepts"
ORDINAL = "judged by libxml2 alone: a name with U+00AA, U+00B5 or U+00BA, which expat accepts"
HALF = "judged by libxml2 alone: half a character in UTF-16, which expat accepts"

# Error numbers of expat and libxml2.
INVALID_TOKEN, UNKNOWN_ENCODING, INCORRECT_ENCODING = 4, 18, 19
NO_URI, NO_XML_ID = 99, 539

FIFTH_EDITION = re.compile(
    "[\u00b7\u00c0-\u00d6\u00d8-\u00f6\u00f8-\u037d\u037f-\u1fff\u200c\u200d\u203f\u2040"
    "\u2070-\u218f\u2c00-\u2fef\u3001-\ud7ff\uf900-\ufdcf\ufdf0-\ufffd\U00010000-\U000effff]")
# Characters that XML 1.1 treats differently: as line ends, or as characters that may or must be references.
XML_1_1_CHARACTERS = re.compile("[\u007f-\u009f\u2028]")
MALFORMED_VERSION = re.compile(r"\ufeff?<\?xml\s+version\s*=\s*([\"'])1\.(?![0-9]+\1)")
REFERENCES = re.compile("&#(?:x([0-9a-fA-F]+)|([0-9]+));")


def encoding_of(content):
    """Guesses the encoding from the first bytes: a byte order mark, or "<" without one."""
    beginnings = {b"\xff\xfe": "utf-16-le", b"<\0": "utf-16-le",
                  b"\xfe\xff": "utf-16-be", b"\0<": "utf-16-be"}
    return beginnings.get(content[:2], "utf-8")


def character_at_fault(content):
    """The character at which expat stops, or an empty text."""
    parser = xml.parsers.expat.ParserCreate(None, "/")
    try:
        parser.Parse(content, True)
    except xml.parsers.expat.ExpatError:
        place = parser.ErrorByteIndex
        return content[place:place + 4].decode(encoding_of(content), "ignore")[:1]
    return ""


def differs_in_xml_1_1(content):
    text = content.decode(encoding_of(content), "replace")
    return bool(XML_1_1_CHARACTERS.search(text)) or any(
        int(digits or number, 16 if digits else 10) < 0x20
        for digits, number in REFERENCES.findall(text))


def has_half_character(content):
    if encoding_of(content) == "utf-8":
        return False
    try:
        content.decode(encoding_of(content))
    except UnicodeDecodeError:
        return True
    return False


def has_ordinal(content, declared):
    """Expat accepts these as letters of names in every encoding except UTF-8."""
    encoding = encoding_of(content)
    if encoding == "utf-8" and (declared or "").upper() != "ISO-8859-1":
        return False
    text = content.decode("iso-8859-1" if encoding == "utf-8" else encoding, "replace")
    return any(character in text for character in "\u00aa\u00b5\u00ba")


# A guard's message, and a test for what the document must then contain.
GUARDS = {
    "no document type declaration": lambda text: "<!DOCTYPE" in text,
    "the version in the XML declaration": lambda text: MALFORMED_VERSION.match(text),
    "nested deeper than the 256 levels": lambda text: text.count("<") > 256,
    "more than the 256 attributes": lambda text: text.count("=") > 256,
    "more than the 1024 names": lambda text: text.count("<") > 1024,
    "a name is longer than the 1024": lambda text: re.search("[^\\s<>='\"]{1025}", text),
    "the file holds NUL characters": lambda text: "\0" in text,
    "the file ends within a character": lambda text: text.endswith("\ufffd"),
}


# Messages of guards that refuse documents which are malformed for everybody but which the parser accepts.
FAULTS = ("half of a character", "the prefix xmlns")


def guard_of(reply):
    """The message of our own guards, if they refused the document."""
    for text in reply.errors:
        _place, refused, reason = text.partition("] refused: ")
        if refused:
            return reason
    return None


def is_guarded_rightly(content, reason):
    text = content.decode(encoding_of(content), "replace")
    return any(said in reason and holds(text) for said, holds in GUARDS.items())


def verdict(content, reply, outcome):
    """Returns whether the document is well-formed (None if it is set aside), and its class or None."""
    expat, libxml2 = set(reply.expat), set(reply.libxml2)
    guard = guard_of(reply)
    if guard is not None and not any(fault in guard for fault in FAULTS):
        return None, GUARD if is_guarded_rightly(content, guard) else None
    if outcome.version == "1.1" and differs_in_xml_1_1(content):
        return None, XML_1_1
    if outcome.version is not None and not re.fullmatch(r"1\.[0-9]+", outcome.version):
        return False, VERSION
    if outcome.version is None and encoding_of(content) != "utf-8" and content[:1] in b"<\0":
        return False, UNMARKED
    if expat == {INCORRECT_ENCODING}:
        return None, CONTRADICTION
    if expat == {UNKNOWN_ENCODING}:
        return None, ENCODING
    if expat and not libxml2 and "\0" in content.decode(encoding_of(content), "replace"):
        return False, NUL
    ill_formed = libxml2 - {NO_URI, NO_XML_ID}
    if ill_formed and not expat and has_half_character(content):
        return False, HALF
    if ill_formed and not expat and has_ordinal(content, outcome.encoding):
        return False, ORDINAL
    if expat == {INVALID_TOKEN} and FIFTH_EDITION.match(character_at_fault(content)):
        return not ill_formed, NAME
    if libxml2 and not ill_formed:
        return not expat, NAMESPACE if NO_URI in libxml2 else XML_ID
    if bool(expat) != bool(libxml2):
        return None, None
    return not expat, None
