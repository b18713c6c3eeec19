"""The meaning of texts in a session: numbers, truth values, keywords, blocks of bytes, paths."""

import base64
import binascii
import ctypes
import os
import re

INTEGER = re.compile(r"-?[0-9]+")
REAL_BEGIN = re.compile(r"[ \t\n\v\f\r]*([+-]?[0-9]*\.?[0-9]*(?:[eE][+-]?[0-9]*)?)")
EXACT_REAL = re.compile(r"-?(?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:[eE][+-]?[0-9]+)?")
XML_BLANKS = " \t\n\r"
NONE = 0xFFFFFFFF  # the id or index that means "none"



class Stop(Exception):
    """The reader refuses a document for its content, not for its syntax."""


strtof = ctypes.CDLL(None).strtof  # rounds only once
strtof.restype = ctypes.c_float
strtof.argtypes = (ctypes.c_char_p, ctypes.c_void_p)


def integer(text, lowest, highest):
    if text is None or not INTEGER.fullmatch(text):
        return None
    number = int(text)
    return number if lowest <= number <= highest else None


def wrapped(number, bits):
    """The low bits as a signed number."""
    number &= (1 << bits) - 1
    return number - (1 << bits) if number >> (bits - 1) else number


def unsigned32(text, default):
    number = integer(text, -2**31, 2**32 - 1)
    return default if number is None else number & 0xFFFFFFFF


def signed32(text, default):
    number = integer(text, -2**31, 2**32 - 1)
    return default if number is None else wrapped(number, 32)


def signed64(text, default):
    number = integer(text, -2**63, 2**63 - 1)
    return default if number is None else number


def finite(number):
    return number if abs(number) != float("inf") else 0.0


def lenient(text, convert):
    """Reads a number like a stream: ignores leading blanks and a tail, and gives 0 on failure."""
    begin = REAL_BEGIN.match(text.replace(",", "."))[1]
    try:
        float(begin)
    except ValueError:
        return 0.0
    return finite(convert(begin))


def real64(text):
    return lenient(text, float)


def real32(text):
    return lenient(text, lambda number: strtof(number.encode(), None))


def exact_real32(text, default):
    if text is None or not EXACT_REAL.fullmatch(text):
        return default
    number = strtof(text.encode(), None)
    return default if abs(number) == float("inf") else number


def strict(text):
    return text == "true"


def tolerant(text):
    return text in ("true", "1")


def flag(a, name, default=False, parse=strict):
    return parse(a[name]) if name in a else default


def real(a, name, default, parse=real64):
    return parse(a[name]) if name in a else default


def block(text):
    """The bytes of a text that is canonical Base64 in lines, otherwise None."""
    digits = "".join(character for character in text if character not in XML_BLANKS)
    try:
        content = base64.b64decode(digits, validate=True)
    except (binascii.Error, ValueError):
        return b""
    return content if base64.b64encode(content).decode() == digits else b""


def seen_from(path, location):
    """Resolves a path in the file `location` by name; an empty path leads nowhere."""
    if not path:
        return ""
    if not path.startswith("/"):
        path = os.path.dirname(location) + "/" + path.replace("\\", "/")
    return os.path.normpath("/" + path.lstrip("/"))
