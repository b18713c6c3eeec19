"""What the scripts that generate files of this folder share."""

import sys


def words(values):
    return ", ".join(f"`{value}`" for value in values)


def write_or_check(page, made):
    """Writes what was made; given --check last, only says whether the page is that. Returns the exit status."""
    if sys.argv[-1] != "--check":
        page.write_text(made, "utf-8")
    elif not page.exists() or page.read_text("utf-8") != made:
        print(f"{page}: not what {sys.argv[0]} makes now; run it without --check")
        return 1
    return 0
