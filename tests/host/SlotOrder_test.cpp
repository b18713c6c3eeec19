// Proves that every operation of every host interface lands in the slot that
// docs/host-interfaces.md states, with the result and the parameters stated there. The tests call
// each operation through its declaration, on an object that is only a table of functions. Each
// function notes its own place in the table.

#include <gtest/gtest.h>

#include <array>
#include <boost/core/demangle.hpp>
#include <cctype>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "host/Implementation.h"
#include "tests/support/SourceFolder.h"

namespace tses {
namespace {

// The recording table
// ------------------------------------------------------------------------------

std::size_t calledSlot = 0;

// A function of the table. It ignores its arguments. Its result works for operations that return a
// number, a truth value or an object.
using SlotFunction = std::uint64_t (*)(void*);

template <std::size_t Index>
std::uint64_t NoteSlot(void*) {
    calledSlot = Index + 1;
    return 0;
}

constexpr std::size_t kMostSlots = 64;

template <std::size_t... Indices>
constexpr std::array<SlotFunction, sizeof...(Indices)> MakeTable(std::index_sequence<Indices...>) {
    return {&NoteSlot<Indices>...};
}

constexpr std::array<SlotFunction, kMostSlots> kRecordingTable =
    MakeTable(std::make_index_sequence<kMostSlots>{});

struct TableOnly {
    const SlotFunction* table = kRecordingTable.data();
};

// Volatile: the compiler must not know what it points to, and must call through the table.
TableOnly tableOnly;
TableOnly* volatile recordingObject = &tableOnly;

// An argument of any type. References refer to something writable.
template <class T>
struct Argument {
    std::remove_reference_t<T> value{};
    T Get() {
        if constexpr (std::is_reference_v<T>) {
            return value;
        } else {
            return std::move(value);
        }
    }
};

template <class Interface, class Result, class... Parameters>
std::size_t SlotOf(Result (Interface::*operation)(Parameters...)) {
    calledSlot = 0;
    auto* object = reinterpret_cast<Interface*>(recordingObject);
    static_cast<void>((object->*operation)(Argument<Parameters>{}.Get()...));
    return calledSlot;
}

// Signatures as the page writes them
// ---------------------------------------------------------------

template <class T>
std::string TypeName() {
    if constexpr (std::is_reference_v<T>) {
        return TypeName<std::remove_reference_t<T>>() + "&";
    } else if constexpr (std::is_pointer_v<T>) {
        return TypeName<std::remove_pointer_t<T>>() + "*" + (std::is_const_v<T> ? " const" : "");
    } else if constexpr (std::is_const_v<T>) {
        return "const " + TypeName<std::remove_const_t<T>>();
    } else if constexpr (std::same_as<T, kelcore::byte>) {
        return "byte";
    } else if constexpr (std::same_as<T, kelcore::char16>) {
        return "char16";
    } else if constexpr (std::same_as<T, kelcore::int32>) {
        return "int32";
    } else if constexpr (std::same_as<T, kelcore::uint32>) {
        return "uint32";
    } else if constexpr (std::same_as<T, kelcore::int64>) {
        return "int64";
    } else {
        const std::string name = boost::core::demangle(typeid(T).name());
        return name.starts_with("tses::") ? name.substr(6) : name;
    }
}

template <class Interface, class Result, class... Parameters>
std::string Signature(const std::string& name, Result (Interface::*)(Parameters...)) {
    std::string list;
    ((list += (list.empty() ? "" : ", ") + TypeName<Parameters>()), ...);
    return TypeName<Result>() + " " + name + "(" + list + ")";
}

// "void SetFile(const char16* path, uint32 id)" without the names of the parameters, which are the
// words after a blank and before a comma or the end of the list.
std::string WithoutParameterNames(std::string_view signature) {
    std::string text;
    for (const char next : signature) {
        if (next == ',' || (next == ')' && !text.ends_with('('))) {
            text.erase(text.find_last_of(' '));
        }
        text += next;
    }
    return text;
}

// What the declarations say
// ------------------------------------------------------------------------

struct Interface {
    std::string base;
    std::map<std::string, std::size_t> slots;  // by signature
};
using Interfaces = std::map<std::string, Interface>;

template <class Type, class Base>
void AddInterface(Interfaces& interfaces) {
    std::string base;
    if constexpr (!std::is_void_v<Base>) {
        static_assert(std::derived_from<Type, Base>);
        base = TypeName<Base>();
    }
    interfaces[TypeName<Type>()].base = base;
}

template <class Type, class Result, class... Parameters>
void AddOperation(Interfaces& interfaces, const std::string& name,
                  Result (Type::*operation)(Parameters...)) {
    interfaces[TypeName<Type>()].slots[Signature(name, operation)] = SlotOf(operation);
}

Interfaces ReadDeclarations() {
    Interfaces interfaces;
#define INTERFACE(name, base) AddInterface<name, base>(interfaces);
#define OPERATION(interface, name) AddOperation(interfaces, #name, &interface::name);
#define UNUSED_SLOT(interface, name) OPERATION(interface, name)
#include "host/Operations.def"
    return interfaces;
}

const Interfaces& Declared() {
    static const Interfaces interfaces = ReadDeclarations();
    return interfaces;
}

// What the page says
// -------------------------------------------------------------------------------

struct Page {
    Interfaces interfaces;
    std::map<std::string, std::vector<std::size_t>> order;  // the slots as the rows have them
};

// The text between the back-quotes of a row "| 7 | `void SetSampleRate(uint32 value)` | ... |".
std::string_view QuotedText(std::string_view row) {
    const std::size_t start = row.find('`') + 1;
    return row.substr(start, row.find('`', start) - start);
}

Page ReadPage() {
    constexpr std::string_view kHeading = "### ";
    constexpr std::string_view kContinues = "Continues ";
    Page page;
    std::string name;
    std::ifstream file(test::SourceFolder() / "docs/host-interfaces.md");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(kHeading)) {
            name = line.substr(kHeading.size());
            page.interfaces[name];
        } else if (line.starts_with(kContinues)) {
            page.interfaces[name].base =
                line.substr(kContinues.size(), line.find('.') - kContinues.size());
        } else if (line.starts_with("| ") && std::isdigit(line[2]) != 0) {
            const std::size_t slot = std::stoul(line.substr(2));
            page.interfaces[name].slots[WithoutParameterNames(QuotedText(line))] = slot;
            page.order[name].push_back(slot);
        }
    }
    return page;
}

const Page& Stated() {
    static const Page page = ReadPage();
    return page;
}

std::vector<std::string> Names(const Interfaces& interfaces) {
    std::vector<std::string> names;
    for (const auto& [name, interface] : interfaces) {
        names.push_back(name);
    }
    return names;
}

std::size_t SlotCount(const std::string& name) {
    if (name.empty()) {
        return 0;
    }
    const Interface& interface = Stated().interfaces.at(name);
    return SlotCount(interface.base) + Stated().order.at(name).size();
}

// The tests
// ----------------------------------------------------------------------------------------

TEST(SlotOrder, ThePageStatesExactlyTheInterfacesThatAreDeclared) {
    EXPECT_EQ(Names(Stated().interfaces), Names(Declared()));
}

// Counts the declarations by itself, because the page and the list of operations have one origin.
TEST(SlotOrder, ThePageHasARowForEveryOperationOfTheHeaders) {
    std::size_t declared = 0;
    for (const auto& header : std::filesystem::directory_iterator(test::SourceFolder() / "host")) {
        std::ifstream file(header.path());
        for (std::string line; std::getline(file, line);) {
            declared += line.ends_with(" = 0;") ? 1U : 0U;
        }
    }
    std::size_t stated = 0;
    for (const auto& [name, slots] : Stated().order) {
        stated += slots.size();
    }
    EXPECT_EQ(stated, declared);
}

class SlotOrderOf : public testing::TestWithParam<std::string> {};

TEST_P(SlotOrderOf, EveryOperationLandsInTheStatedSlot) {
    EXPECT_EQ(Declared().at(GetParam()).slots, Stated().interfaces.at(GetParam()).slots);
}

TEST_P(SlotOrderOf, TheStatedBaseIsTheDeclaredOne) {
    EXPECT_EQ(Declared().at(GetParam()).base, Stated().interfaces.at(GetParam()).base);
}

TEST_P(SlotOrderOf, TheStatedSlotsContinueThoseOfTheBaseWithoutAGap) {
    std::size_t slot = SlotCount(Stated().interfaces.at(GetParam()).base);
    for (const std::size_t stated : Stated().order.at(GetParam())) {
        EXPECT_EQ(stated, ++slot);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryInterface, SlotOrderOf, testing::ValuesIn(Names(Declared())),
                         [](const auto& each) { return each.param; });

}  // namespace
}  // namespace tses
