#!/usr/bin/env python3
"""Writes the page without a session as a C++ source.

    embed_template.py PAGE SOURCE
"""

import sys
from pathlib import Path

NUMBERS_IN_LINE = 24


def main():
    page, source = map(Path, sys.argv[1:])
    numbers = [str(byte) for byte in page.read_bytes()]
    lines = [",".join(numbers[i:i + NUMBERS_IN_LINE]) for i in range(0, len(numbers), NUMBERS_IN_LINE)]
    body = ",\n".join(lines)
    source.write_text(
        '#include "toolkit/view/page/PageTemplate.h"\n\n'
        "namespace orvo::page {\n"
        "namespace {\n\n"
        f"constexpr unsigned char kBytes[] = {{\n{body}}};\n\n"
        "}  // namespace\n\n"
        "const std::string_view kTemplate(reinterpret_cast<const char*>(kBytes), sizeof kBytes);\n\n"
        "}  // namespace orvo::page\n")


if __name__ == "__main__":
    main()
