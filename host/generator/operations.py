"""The lists of operations (host/*.def), for whoever has to name them all."""

from .bases import base_name, has_base
from .cpp import NOTE

_ALL = """\
//
// Every interface, with its operations and unused slots in slot order and the class of host/Bases.h that
// implements it. Whoever includes this defines the macros that it wants, and finds all undefined afterwards.
"""

_OF_SESSIONS = """\
//
// Every operation of a session and of the objects that it leads to, in slot order, without the counting of
// references and the unused slots. Whoever includes this defines OPERATION, and finds it undefined afterwards.
"""


def operations(interfaces):
    """host/Operations.def: every interface with its operations, its unused slots and its base."""
    macros = (
        "INTERFACE(name, base)",
        "OPERATION(interface, name)",
        "UNUSED_SLOT(interface, name)",
        "BASE(name, interface)",
    )
    rows = []
    for interface in interfaces:
        rows.append(f"\nINTERFACE({interface.name}, {interface.base or 'void'})")
        if has_base(interfaces, interface):
            rows.append(f"BASE({base_name(interface)}, {interface.name})")
        for each in interface.operations:
            macro = "UNUSED_SLOT" if each.is_unused else "OPERATION"
            rows.append(f"{macro}({interface.name}, {each.name})")
    return _list_of_rows(_ALL, macros, rows)


def session_operations(interfaces):
    """host/SessionOperations.def: the operations of what a session leads to."""
    rows = []
    for interface in filter(interfaces.is_reached, interfaces):
        rows.append("")
        rows += [f"OPERATION({interface.name}, {each.name})" for each in interface.operations if not each.is_unused]
    return _list_of_rows(_OF_SESSIONS, ("OPERATION(interface, name)",), rows)


def _list_of_rows(note, macros, rows):
    names = [macro.partition("(")[0] for macro in macros]
    defaults = "".join(f"#ifndef {name}\n#define {macro}\n#endif\n" for name, macro in zip(names, macros))
    ends = "".join(f"#undef {name}\n" for name in names)
    return NOTE + note + "\n" + defaults + "\n".join(rows) + "\n\n" + ends
