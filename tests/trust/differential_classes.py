"""Documents about which the parsers are known to differ, or that our own guards refuse."""


def class_of(content, reply):
    """The name of the class that a document belongs to, or none."""
    if any(") refused: " in text or "] refused: " in text for text in reply.errors):
        return "refused by a guard"
    return None
