"""Writes the C++ that restates the interfaces."""

import re
import textwrap

from .declarations import NUMBERS, PRIVATE, ROOT

WIDTH = 100
_NOTE = "// Made by host/generate.py from the headers of the host interfaces.\n"


def implementation(interfaces):
    """host/Implementation.h: each operation hands its arguments to one function template of the object."""
    return (
        _header(interfaces, "<type_traits>")
        + _IMPLEMENTATION_START
        + "".join(_whole(interfaces, each) for each in interfaces)
        + _IMPLEMENTATION_TEMPLATE
        + "".join(_implementation_of(interfaces, each) for each in interfaces)
        + "\n}  // namespace tses\n"
    )


def bases(interfaces):
    """host/Bases.h: classes whose operations take nothing and give nothing."""
    return (
        _header(interfaces, '"host/Counted.h"')
        + _BASES_START
        + "\n".join(_base_of(interfaces, each) for each in interfaces if _has_base(interfaces, each))
        + "\n}  // namespace tses\n"
    )


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
        if _has_base(interfaces, interface):
            rows.append(f"BASE({_base_name(interface)}, {interface.name})")
        for each in interface.operations:
            macro = "UNUSED_SLOT" if each.is_unused else "OPERATION"
            rows.append(f"{macro}({interface.name}, {each.name})")
    return _list_of_rows(_OPERATIONS_NOTE, macros, rows)


def session_operations(interfaces):
    """host/SessionOperations.def: the operations of what a session leads to."""
    rows = []
    for interface in filter(interfaces.is_reached, interfaces):
        rows.append("")
        rows += [f"OPERATION({interface.name}, {each.name})" for each in interface.operations if not each.is_unused]
    return _list_of_rows(_SESSION_OPERATIONS_NOTE, ("OPERATION(interface, name)",), rows)


def _header(interfaces, *more):
    includes = sorted([*(f'"{header}"' for header in interfaces.headers()), *more])
    return _NOTE + "#pragma once\n\n" + "".join(f"#include {each}\n" for each in includes) + "\n"


def _list_of_rows(note, macros, rows):
    names = [macro.partition("(")[0] for macro in macros]
    defaults = [f"#ifndef {name}\n#define {macro}\n#endif\n" for name, macro in zip(names, macros)]
    return _NOTE + note + "\n" + "".join(defaults) + "\n".join(rows) + "\n\n" + "".join(f"#undef {each}\n" for each in names)


def _function(operation, parameters, ending):
    """`uint32 GetId() override { return 0; }`, over several lines where one is too short."""
    start = f"    {operation.result} {operation.name}("
    line = start + ", ".join(parameters) + ")" + ending
    if len(line) <= WIDTH:
        return line + "\n"
    if ending.startswith(" override { "):
        ending = ending.replace("{ ", "{\n        ").replace(" }", "\n    }")
    ending, newline, body = ending.partition("\n")
    lines = [""]
    for parameter in [each + ", " for each in parameters[:-1]] + [parameters[-1] + ")" + ending]:
        if len((lines[-1] + parameter).rstrip()) > WIDTH - len(start):
            lines.append("")
        lines[-1] += parameter
    return start + ("\n" + " " * len(start)).join(map(str.rstrip, lines)) + newline + body + "\n"


def _comment(text, indent=""):
    return "".join(f"{indent}/// {line}\n" for line in textwrap.wrap(text, WIDTH - len(indent) - 4))


_IMPLEMENTATION_START = """\
namespace tses {

/// The interface that objects of `Interface` cast to: the private one that continues it, where there is one.
template <class Interface>
struct WholeInterface {
    using type = Interface;
};
"""

_IMPLEMENTATION_TEMPLATE = """
/// Whether an operation writes to an argument of this type: a reference, a pointer to a number, a buffer.
template <class Parameter>
inline constexpr bool kIsOutput =
    (std::is_lvalue_reference_v<Parameter> && !std::is_const_v<std::remove_reference_t<Parameter>>) ||
    (std::is_pointer_v<Parameter> && !std::is_const_v<std::remove_pointer_t<Parameter>> &&
     std::is_arithmetic_v<std::remove_pointer_t<Parameter>>);

/// Implements every operation of `Interface` but the counting of references by one function template of
/// `Object`, the class that derives from it:
///
///     template <class Declaring, class Result, class... Parameters>
///     Result Answer(const char* name, Result (Declaring::*operation)(Parameters...),
///                   std::type_identity_t<Parameters>... arguments);
///
/// `Declaring` is the interface that declares the operation, which `Interface` may only inherit.
template <class Interface, class Object>
class Implementation;
"""


def _whole(interfaces, interface):
    whole = interfaces.whole(interface)
    if whole is interface:
        return ""
    return f"template <>\nstruct WholeInterface<{interface.name}> {{\n    using type = {whole.name};\n}};\n"


def _implementation_of(interfaces, interface):
    lines = [
        f"\ntemplate <class Object>\nclass Implementation<{interface.name}, Object> : public {interface.name} {{\npublic:\n"
    ]
    for declaring, operation in interfaces.operations(interface):
        names = [parameter.name for parameter in operation.parameters]
        arguments = ", ".join([f'"{operation.name}"', f"&{declaring.name}::{operation.name}", *names])
        lines.append(_function(operation, [str(each) for each in operation.parameters], " final {"))
        lines.append(f"        return static_cast<Object*>(this)->Answer({arguments});\n    }}\n")
    lines.append("\nprotected:\n    ~Implementation() = default;\n};\n")
    return "".join(lines)


_BASES_START = '''\
/// What a host derives its objects from: for every interface a class whose operations take nothing
/// and give nothing, that is null, 0 or false, and leave their outputs as they are. A host overrides
/// what it wants to have.
///
/// The bases count references: `Counted` says who owns an object and how long it lives. An object
/// whose interface has a private one implements both, because the plug-in needs both. Where null
/// means more than that the thing is not there, the operation says so; some nulls make a read or a
/// save fail.
///
/// The plug-in calls on the thread that called `SessionInterface`, one call at a time. The bases
/// have no state but the count, so they are as safe to share between threads as what a host adds.
namespace tses {

'''


def _has_base(interfaces, interface):
    return interface.name != ROOT and interfaces.whole(interface) is interface


def _base_name(interface):
    return interface.name.removeprefix("I").removesuffix(PRIVATE) + "Base"


def _base_of(interfaces, interface):
    lines = [
        _comment(_interface_comment(interfaces, interface)),
        f"class {_base_name(interface)} : public Counted<{interface.name}> {{\npublic:\n",
    ]
    for _, operation in interfaces.operations(interface):
        lines.append(_comment(_what_null_means(operation), "    "))
        parameters = [f"{parameter.type} /*{parameter.name}*/" for parameter in operation.parameters]
        lines.append(_function(operation, parameters, f" override {_nothing(operation.result)}"))
    lines.append("};\n")
    return "".join(lines)


def _interface_comment(interfaces, interface):
    """Of a private interface, the comment of the one that it continues: that one says what the object is."""
    if interface.name.endswith(PRIVATE):
        return interfaces[interface.base].comment
    return interface.comment


def _what_null_means(operation):
    if operation.returned_interface is None:
        return ""
    sentences = re.split(r"(?<=\.)\s+", operation.comment)
    return " ".join(each for each in sentences if re.search(r"\bnull\b", each, re.IGNORECASE))


def _nothing(result):
    if result == "void":
        return "{}"
    if result not in NUMBERS:
        return "{ return nullptr; }"
    return "{ return false; }" if result == "bool" else "{ return 0; }"


_OPERATIONS_NOTE = """\
//
// Every interface, with its operations and unused slots in slot order and the class of host/Bases.h that
// implements it. Whoever includes this defines the macros that it wants, and finds all undefined afterwards.
"""

_SESSION_OPERATIONS_NOTE = """\
//
// Every operation of the objects that a session leads to, and of the session, in slot order, without the
// counting of references and the unused slots. Whoever includes this defines OPERATION, and finds it
// undefined afterwards.
"""
