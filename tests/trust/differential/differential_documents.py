"""Generates documents from a seed: sessions with everything in right and wrong places, and mutations."""

import base64
import random
import re

from differential_shapes import ATTRIBUTES, CHILDREN, KEYWORDS, NAMES, TEXTS

INTEGERS = ("0", "1", "2", "-1", "7", "48000", "4294967295", "4294967296", "-2147483648",
            "-2147483649", "2147483648", "9223372036854775807", "9223372036854775808",
            "-9223372036854775808", "", "+5", " 3", "3 ", "1.0", "0x10", "007", "-0", "--1", "1e3",
            "\u0663", "5000000000")
REALS = ("0", "1", "-1.5", "0,5", "120.25", "1e308", "1e309", "-1e400", "1e-400", "1e-45", "3.5e38",
         "1e39", ".5", "5.", "+2", " 7", "\t8", "7 ", "1.5x", "abc", "", "inf", "nan", "1e", "1e+",
         "1e5e5", "1.2.3", "1,2,3", "-", "-.", "0x1p3", "0.1", "16777217", "1.00000005960464477539",
         "-0", "1E5", "123456789.123456789", "\u0663.5")
BOOLEANS = ("true", "false", "1", "0", "TRUE", "", "true ", "yes")
WORDS = ("", "Voice", " two  words ", "\u00e9\u00df", "\u4e16\u754c", "\U0001d11e", "a&b<c>d\"e'f", "]]>",
         "line\nend", "tab\there", "cr\rhere", "\u0085\u2028", "@0", "{A1}", "x" * 300, "\u007f",
         "-->", "\ufffd", "e\u0301")
BROKEN = ("<", ">", "&", "&amp", "&#0;", "&#x1F;", "&#xFFFE;", "&#xD800;", "&#x110000;", "&unknown;",
          "]]>", "<![CDATA[", "<!--", "--", "-->", "<?xml version=\"1.0\"?>", "<?", "?>", "</",
          "/>", "\"", "'", "=", "\x01", "\x0b", "\ufffe", "\uffff", "<!DOCTYPE orvo>", "x:",
          "xmlns:x=\"\"", " a='1' a='2'", "<a:b/>", "<xmlns:a/>", "&#56;", "&lt;", "<a b=\"<\"/>", "<1/>", "<a.b-c/>",
          "\u00b7", "<\u00e9/>", "\u00b5", "<?p:q r?>", "<?xmL ?>", "xml:lang='de'", "xmlns='urn:d'",
          "xmlns:xml='urn:x'", "xmlns:xmlns='urn:x'", ":", "<a:b:c/>", "<:a/>", "&#x0;", "&#xD;",
          "<a xmlns:p='urn:1' xmlns:q='urn:1' p:i='1' q:i='2'/>", "<!ELEMENT a ANY>", "\r", "\r\n",
          "<orvo/>", "</orvo>", "<orvo>")
ENCODINGS = (("utf-8", None),) * 6 + (
    ("utf-8", "UTF-8"), ("utf-8", "utf-8"), ("utf-8-sig", "UTF-8"), ("utf-8-sig", None),
    ("iso-8859-1", "ISO-8859-1"), ("iso-8859-1", "iso-8859-1"), ("ascii", "US-ASCII"),
    ("utf-16", "UTF-16"), ("utf-16", None), ("utf-16-be-sig", "UTF-16"), ("utf-16-be-sig", None),
    ("utf-16-le", "UTF-16"), ("utf-16-be", "UTF-16"))
ODD_DECLARATIONS = ('version="1.1"', 'version="1.1"', 'version="1.5"', 'version="2.0"', 'version="1"',
                    'version="1.0" standalone="yes"', "version='1.0' standalone='maybe'",
                    'version="1.0" encoding="x-unknown"', 'version="1.0" encoding="UTF-16"',
                    'version="1.0" encoding="windows-1252"', 'encoding="UTF-8"', "",
                    'version="1.0" encoding="UTF-8" encoding="UTF-8"', 'version="1.0"encoding="UTF-8"',
                    'VERSION="1.0"', 'version="1.0" encoding=""', 'version="1.0" encoding="-utf8"')
SPECIAL = re.compile("[&<>\"'\t\n\r]")


class Writer:
    """One session, as text."""

    def __init__(self, rng):
        self.rng = rng
        self.pieces = []
        self.left = rng.choice((5, 15, 40, 80))  # how many more elements to create
        self.wrong = rng.choice((0, 0, 0.03, 0.1, 0.4))  # share of elements in arbitrary places
        self.odd = rng.choice((0, 0.1, 0.5))  # share of odd values
        self.names = rng.choice((0, 0, 0, 0.1, 0.4))  # share of names with a prefix
        self.noise = rng.choice((0, 0, 0.1, 0.3))  # share of meaningless content
        self.spread = rng.choice((0.3, 0.6, 0.9))  # share of attributes that are present
        self.prefixes = []

    def chance(self, share):
        return self.rng.random() < share

    def document(self):
        self.filler(False)
        self.element("orvo" if not self.chance(0.01) else self.rng.choice(NAMES), 1)
        self.filler(False)
        return "".join(self.pieces)

    def add(self, text):
        self.pieces.append(text)

    def value(self, kind):
        rng = self.rng
        if kind in KEYWORDS:
            return rng.choice(KEYWORDS[kind])
        if self.chance(self.odd):
            return rng.choice({"int": INTEGERS, "id": INTEGERS, "real": REALS,
                               "bool": BOOLEANS}.get(kind, WORDS))
        if kind == "id":
            return str(rng.randrange(1, 6))
        if kind == "int":
            return str(rng.choice((rng.randrange(10), rng.randrange(-100, 100000))))
        if kind == "real":
            return repr(round(rng.uniform(-200, 200), rng.randrange(1, 17)))
        return rng.choice(("true", "false") if kind == "bool" else WORDS)

    def block(self):
        content = self.rng.randbytes(self.rng.choice((0, 1, 2, 3, 60)))
        text = base64.b64encode(content).decode()
        if self.chance(0.3):
            text = text.replace("A", self.rng.choice(("-", "=", "\u00e9", " ", "")), 1)
        if self.chance(0.3):
            text = f"\n  {text[:20]}\n{text[20:]}\t"
        if self.chance(0.1):
            text = text[:-1]
        return text

    def escaped(self, text, quote=None):
        """Encodes text as content or within quotes: any character may become a reference, some must."""
        share = 0.1 if self.chance(0.15) else 0
        if not share and not SPECIAL.search(text):
            return text
        pieces = []
        for character in text:
            if character in "&<" or character == quote or (character == ">" and quote is None):
                names = {"&": "&amp;", "<": "&lt;", ">": "&gt;", '"': "&quot;", "'": "&apos;"}
                pieces.append(self.rng.choice((names[character], f"&#{ord(character)};")))
            elif self.chance(share) or (character in "\r\n\t" and quote and self.chance(0.7)):
                form = self.rng.choice(("&#{};", "&#x{:x};", "&#x{:04X};"))
                pieces.append(form.format(ord(character)))
            else:
                pieces.append(character)
        return "".join(pieces)

    def text(self, text):
        """Splits a text into plain parts and CDATA sections, separated by meaningless content."""
        while text:
            part = text[:self.rng.randrange(1, len(text) + 1)]
            text = text[len(part):]
            if "]]>" not in part and self.chance(0.25):
                self.add(f"<![CDATA[{part}]]>")
            else:
                self.add(self.escaped(part))
            if self.chance(self.noise):
                self.filler(True)

    def filler(self, inside):
        rng = self.rng
        while self.chance(self.noise):
            self.add(rng.choice(("\n  ", " ", "<!-- a - b -->", "<!---->", "<?target data?>",
                                 "<?t?>", "\t", "\n" if not inside else "text")))

    def prefixed(self, name, is_attribute):
        if not self.chance(self.names):
            return name
        if self.prefixes and not self.chance(0.03):
            return f"{self.rng.choice(self.prefixes)}:{name}"
        return f"{self.rng.choice(('xml' if is_attribute else 'u', 'u', 'v'))}:{name}"

    def namespaces(self):
        """Adds declarations to a tag; their prefixes stay in scope until the caller removes them."""
        rng = self.rng
        declarations = []
        while self.chance(self.names / 2):
            prefix = rng.choice(("p", "q", "ns1", "\u00e9", "_x"))
            uri = rng.choice(("urn:1", "urn:2", "http://example.org/a b", "x", "urn:1/id", "\u00fc"))
            if self.chance(0.2):
                declarations.append(f"xmlns={rng.choice((repr('urn:d'), repr('')))}")
            elif prefix not in self.prefixes:
                declarations.append(f'xmlns:{prefix}="{uri}"')
                self.prefixes.append(prefix)
        return list(dict.fromkeys(declarations))

    def attributes(self, name):
        rng = self.rng
        chosen = [pair for pair in ATTRIBUTES[name] if self.chance(self.spread)]
        if name in ("masterTrack", "audioTrack", "busTrack", "instrumentTrack"):
            # Without a known id the session would end here.
            chosen = [pair for pair in chosen if pair[0] != "id"]
            chosen.append(("id", "id" if self.chance(0.02) else "known"))
        if self.chance(self.wrong):
            chosen.append((rng.choice(("unknown", "id", "name", "Id", "x.y-z", "\u00e9")), "text"))
        rng.shuffle(chosen)
        known = str(rng.randrange(1, 5))
        written = {}

        def write(key, text):
            quote = rng.choice("\"\"\"'")
            equals = "=" if not self.chance(self.noise) else rng.choice((" =", "= ", "\n=\t"))
            written.setdefault(key, []).append(
                f"{key}{equals}{quote}{self.escaped(text, quote)}{quote}")

        for attribute, kind in chosen:
            plain = kind == "known" and self.chance(0.95)
            key = attribute if plain else self.prefixed(attribute, True)
            if key not in written or self.chance(0.02):
                write(key, known if kind == "known" else self.value(kind))
            other = self.prefixed(attribute, True)
            if other not in written and self.chance(self.names / 4):
                write(other, self.value("id" if kind == "known" else kind))
        return [text for texts in written.values() for text in texts]

    def element(self, name, depth):
        self.left -= 1
        before = len(self.prefixes)
        declarations = self.namespaces()
        written = self.prefixed(name, False)
        blank = " " if not self.chance(self.noise) else self.rng.choice(("\n", "\t ", "\r\n"))
        tag = [written, *declarations, *self.attributes(name)]
        end = "" if not self.chance(self.noise) else " "
        empty = not CHILDREN[name] and not TEXTS[name] and not self.chance(self.wrong)
        if empty and self.chance(0.8):
            self.add(f"<{blank.join(tag)}{end}/>")
        else:
            self.add(f"<{blank.join(tag)}{end}>")
            self.content(name, depth)
            self.add(f"</{written}{end}>")
        del self.prefixes[before:]

    def content(self, name, depth):
        rng = self.rng
        if TEXTS[name] and not self.chance(0.1):
            self.text(self.block() if TEXTS[name] == "block" else rng.choice(WORDS))
        count = rng.randrange(1, 7) if CHILDREN[name] else int(self.chance(self.wrong))
        for _ in range(count):
            self.filler(True)
            if self.left <= 0 or depth > 40:
                break
            if self.chance(self.wrong) or not CHILDREN[name]:
                self.element("orvo" if self.chance(0.05) else rng.choice(NAMES), depth + 1)
            else:
                self.element(rng.choice(CHILDREN[name]), depth + 1)
        self.filler(True)


def swap(rng, text, begin, end):
    """Swaps two stretches between these characters."""
    places = [place for place, character in enumerate(text) if character == begin]
    if len(places) < 2:
        return text
    one, other = sorted(rng.sample(places, 2))
    one_end, other_end = text.find(end, one + 1), text.find(end, other + 1)
    if not one < one_end <= other < other_end:
        return text
    return (text[:one] + text[other:other_end] + text[one_end:other] + text[one:one_end]
            + text[other_end:])


def repeat_attribute(rng, text):
    places = [place for place, character in enumerate(text) if character == "="]
    if not places:
        return text
    place = rng.choice(places)
    begin, end = text.rfind(" ", 0, place), text.find(" ", place)
    return text[:end] + text[begin:end] + text[end:] if 0 <= begin < end else text


def mutated(rng, text, other):
    """Changes the document in one way, which may leave it well-formed."""
    place = rng.randrange(len(text) + 1)
    length = rng.choice((1, 1, 2, 5, 30, 300))
    way = rng.randrange(9)
    if way == 0:
        return text[:place] + text[place + length:]
    if way == 1:
        return text[:place] + rng.choice(BROKEN) + text[place:]
    if way == 2:
        return text[:place] + text[place:place + length] * 2 + text[place + length:]
    if way == 3:
        return text[:place] + rng.choice("<>&\"'/ =aA1-]![?:;#\n\u00e9") + text[place + 1:]
    if way == 4:
        begin = rng.randrange(len(other) + 1)
        return text[:place] + other[begin:begin + length * 5] + text[place + length:]
    if way == 5:
        return swap(rng, text, "<", ">")
    if way == 6:
        return swap(rng, text, " ", " ")
    if way == 7:
        return repeat_attribute(rng, text)
    return text[:place] if rng.random() < 0.2 else text[:place] + text[place + 1:]


def encoded(rng, text):
    encoding, declared = rng.choice(ENCODINGS)
    if text.startswith("<?xml "):
        pass
    elif rng.random() < 0.04:
        text = f"<?xml {rng.choice(ODD_DECLARATIONS)}?>{text}"
    elif declared or rng.random() < 0.3:
        name = f' encoding="{declared}"' if declared else ""
        text = f'<?xml version="1.0"{name}?>{text}'
    mark = b""
    if encoding == "utf-16-be-sig":
        encoding, mark = "utf-16-be", b"\xfe\xff"
    return mark + text.encode(encoding, "xmlcharrefreplace")


def damaged(rng, content):
    """Changes or removes a few bytes."""
    content = bytearray(content)
    for _ in range(rng.choice((1, 1, 2, 4))):
        if content:
            place = rng.randrange(len(content))
            if rng.random() < 0.2:
                del content[place:place + rng.choice((1, 2, 50))]
            else:
                content[place] = rng.choice((content[place] ^ 1 << rng.randrange(8),
                                             rng.randrange(1, 256)))
    return bytes(content)


def guarded(rng, text):
    """Inserts something that our own guards refuse; the document may stay well-formed."""
    way = rng.randrange(5)
    if way == 0:
        declaration = rng.choice(("<!DOCTYPE orvo>", '<!DOCTYPE orvo SYSTEM "a.dtd">',
                                  '<!DOCTYPE orvo [<!ENTITY a "b">]>'))
        return declaration + text
    if way == 1:
        depth = rng.randrange(250, 260)
        return "<orvo>" * depth + "</orvo>" * depth
    if way == 2:
        pairs = " ".join(f'a{number}="{number}"' for number in range(rng.randrange(250, 260)))
        return f"<orvo><session {pairs}/></orvo>"
    if way == 3:
        names = "".join(f"<n{number}/>" for number in range(rng.randrange(1018, 1028)))
        return f"<orvo>{names}<session/></orvo>"
    return text.replace("<", "<\0", 1) if rng.random() < 0.2 else text + "\0"


def document(seed, index, templates):
    """Returns the bytes of one document. `templates` are texts of sessions to start from."""
    rng = random.Random(f"{seed}/{index}")
    if rng.random() < 0.12:
        text = rng.choice(templates)
    else:
        text = Writer(rng).document()
    if rng.random() < 0.3:
        for _ in range(rng.choice((1, 1, 1, 2, 5))):
            text = mutated(rng, text, rng.choice(templates))
    if rng.random() < 0.01:
        text = guarded(rng, text)
    content = encoded(rng, text)
    return damaged(rng, content) if rng.random() < 0.06 else content
