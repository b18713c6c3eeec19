"""host/Bases.h: a class for every interface whose operations take nothing and give nothing."""

import re

from .cpp import comment, function, header_start
from .declarations import NUMBERS, PRIVATE, ROOT

_START = '''\
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


def bases(interfaces):
    classes = [_base_of(interfaces, each) for each in interfaces if has_base(interfaces, each)]
    return header_start(interfaces, '"host/Counted.h"') + _START + "\n".join(classes) + "\n}  // namespace tses\n"


def has_base(interfaces, interface):
    return interface.name != ROOT and interfaces.whole(interface) is interface


def base_name(interface):
    return interface.name.removeprefix("I").removesuffix(PRIVATE) + "Base"


def _base_of(interfaces, interface):
    lines = [
        comment(_comment_of(interfaces, interface)),
        f"class {base_name(interface)} : public Counted<{interface.name}> {{\npublic:\n",
    ]
    for _, operation in interfaces.operations(interface):
        lines.append(comment(_what_null_means(operation), "    "))
        parameters = [f"{parameter.type} /*{parameter.name}*/" for parameter in operation.parameters]
        lines.append(function(operation, parameters, f" override {_nothing(operation.result)}"))
    lines.append("};\n")
    return "".join(lines)


def _comment_of(interfaces, interface):
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
