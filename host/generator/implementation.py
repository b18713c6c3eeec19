"""host/Implementation.h: each operation hands its arguments to one function template of the object."""

from .cpp import function, header_start

_WHOLE = """\
namespace tses {

/// The interface that objects of `Interface` cast to: the private one that continues it, where there is one.
template <class Interface>
struct WholeInterface {
    using type = Interface;
};
"""

_IMPLEMENTATION = """
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


def implementation(interfaces):
    return (
        header_start(interfaces, "<type_traits>")
        + _WHOLE
        + "".join(_whole(interfaces, each) for each in interfaces)
        + _IMPLEMENTATION
        + "".join(_implementation_of(interfaces, each) for each in interfaces)
        + "\n}  // namespace tses\n"
    )


def _whole(interfaces, interface):
    whole = interfaces.whole(interface)
    if whole is interface:
        return ""
    return f"template <>\nstruct WholeInterface<{interface.name}> {{\n    using type = {whole.name};\n}};\n"


def _implementation_of(interfaces, interface):
    lines = [
        "\ntemplate <class Object>\n"
        f"class Implementation<{interface.name}, Object> : public {interface.name} {{\npublic:\n"
    ]
    for declaring, operation in interfaces.operations(interface):
        names = [parameter.name for parameter in operation.parameters]
        arguments = ", ".join([f'"{operation.name}"', f"&{declaring.name}::{operation.name}", *names])
        lines.append(function(operation, [str(each) for each in operation.parameters], " final {"))
        lines.append(f"        return static_cast<Object*>(this)->Answer({arguments});\n    }}\n")
    lines.append("\nprotected:\n    ~Implementation() = default;\n};\n")
    return "".join(lines)
