// Proves for every operation that a stand-in forwards it to the same operation of the host's object
// and reports its name and its arguments in order. The host's objects are only tables of functions.
// Each function notes its own place in the table, and the results lead to every stand-in.

#include <gtest/gtest.h>

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <typeindex>
#include <typeinfo>
#include <utility>
#include <vector>

#include "host/Implementation.h"
#include "reference_host/recorder/Recorder.h"

namespace refhost {
namespace {

using namespace tses;

// Host objects made of a table -------------------------------------------------------------------

std::size_t calledSlot = 0;
void* nextResult = nullptr;

using SlotFunction = void* (*)(void*);

template <std::size_t Index>
void* NoteSlot(void*) {
    if (Index >= 2) {  // AddReference and Release come between the calls
        calledSlot = Index + 1;
    }
    return nextResult;
}

constexpr std::size_t kMostSlots = 64;

// A table as the compiler lays it out: the offset to the whole object and its type, for casts, and
// then the functions.
struct Table {
    std::ptrdiff_t offsetToWhole = 0;
    const std::type_info* type;
    std::array<SlotFunction, kMostSlots> slots;
};

template <std::size_t... Indices>
Table MakeTable(const std::type_info& type, std::index_sequence<Indices...>) {
    return {0, &type, {&NoteSlot<Indices>...}};
}

// The only host object of an interface; of its private interface if there is one.
template <class Interface>
Interface* HostObject() {
    static const Table table = MakeTable(typeid(typename WholeInterface<Interface>::type),
                                         std::make_index_sequence<kMostSlots>{});
    static const SlotFunction* pointerToTable = table.slots.data();
    // Volatile: the compiler must not know what it points to, and must call through the table.
    static void* volatile object = &pointerToTable;
    return static_cast<Interface*>(object);
}

// Arguments that differ from each other -----------------------------------------------------------

template <class Parameter>
struct Argument {
    explicit Argument(std::size_t position) {
        if constexpr (std::same_as<Parameter, bool>) {
            value = position % 2 == 0;
        } else if constexpr (std::is_arithmetic_v<Parameter>) {
            value = static_cast<Parameter>(position + 1);
        }
    }

    Parameter Get() { return value; }
    std::vector<TraceValue> Expected() const {
        if constexpr (std::same_as<Parameter, bool> || std::floating_point<Parameter>) {
            return {value};
        } else if constexpr (std::unsigned_integral<Parameter>) {
            return {std::uint64_t{value}};
        } else if constexpr (std::signed_integral<Parameter>) {
            return {std::int64_t{value}};
        } else {
            return {};
        }
    }

    std::remove_reference_t<Parameter> value{};
};

template <>
struct Argument<const char16_t*> {
    explicit Argument(std::size_t position) : text(u"text " + std::u16string(position, u'*')) {}
    const char16_t* Get() const { return text.c_str(); }
    std::vector<TraceValue> Expected() const { return {text}; }

    std::u16string text;
};

template <>
struct Argument<IHostString*> {
    explicit Argument(std::size_t) {}
    static IHostString* Get() { return nullptr; }
    static std::vector<TraceValue> Expected() { return {std::monostate()}; }
};

// A pointer with a count is followed by the count: 2, its position plus one.
template <class Element>
struct Argument<const Element*> {
    explicit Argument(std::size_t position) { EXPECT_EQ(position, 0U); }
    const Element* Get() const { return elements.data(); }
    std::vector<TraceValue> Expected() const { return {elements}; }

    std::vector<Element> elements{7, 8};
};

template <>
struct Argument<kelcore::int32*> {
    explicit Argument(std::size_t) {}
    kelcore::int32* Get() { return &value; }
    static std::vector<TraceValue> Expected() { return {}; }

    kelcore::int32 value = 0;
};

std::vector<TraceValue> ExpectedArguments(const std::vector<std::vector<TraceValue>>& each) {
    std::vector<TraceValue> all;
    for (const auto& values : each) {
        all.insert(all.end(), values.begin(), values.end());
    }
    if (!all.empty() && all.front().index() >= 7) {
        all.resize(1);  // the count belongs to the list or block
    }
    return all;
}

// Driving every operation -------------------------------------------------------------------------

class StandIns : public testing::Test {
protected:
    StandIns() {
        reached_[typeid(IEditSession)] = &recorder_.Wrap(*HostObject<IEditSession>());
        reached_[typeid(IQuerySession)] = &recorder_.Wrap(*HostObject<IQuerySession>());
    }

    template <class Interface>
    Interface* Reached() {
        const auto found = reached_.find(typeid(Interface));
        return found == reached_.end() ? nullptr : static_cast<Interface*>(found->second);
    }

    template <class Interface, class Result, class... Parameters>
    void Drive(const std::string& interfaceName, const std::string& name,
               Result (Interface::*operation)(Parameters...)) {
        const std::string fullName = interfaceName + "." + name;
        if (Reached<Interface>() != nullptr && driven_.insert(fullName).second) {
            SCOPED_TRACE(fullName);
            Drive(interfaceName, name, operation, std::index_sequence_for<Parameters...>{});
        }
    }

    std::set<std::string> driven_;
    std::size_t known_ = 0;

private:
    template <class Interface, class Result, class... Parameters, std::size_t... Positions>
    void Drive(const std::string& interfaceName, const std::string& name,
               Result (Interface::*operation)(Parameters...), std::index_sequence<Positions...>) {
        std::tuple<Argument<Parameters>...> arguments{Argument<Parameters>(Positions)...};
        const auto call = [&](Interface* object) -> Result {
            return (object->*operation)(std::get<Positions>(arguments).Get()...);
        };
        nextResult = nullptr;
        static_cast<void>(call(HostObject<Interface>()));
        const std::size_t expectedSlot = calledSlot;

        calledSlot = 0;
        if constexpr (std::is_pointer_v<Result>) {
            using Object = std::remove_pointer_t<Result>;
            nextResult = std::same_as<Object, IHostString> ? nullptr : HostObject<Object>();
            Remember(call(Reached<Interface>()));
        } else {
            static_cast<void>(call(Reached<Interface>()));
        }
        EXPECT_EQ(reportedSlot_, expectedSlot);
        EXPECT_EQ(last_.interfaceName, interfaceName);
        EXPECT_EQ(last_.operation, name);
        EXPECT_EQ(last_.arguments,
                  ExpectedArguments({std::get<Positions>(arguments).Expected()...}));
        EXPECT_EQ(last_.value.has_value(), kReturnsValue<Result>);
        EXPECT_EQ(last_.returned.has_value(), kReturnsObject<Result>);
    }

    template <class Result>
    static constexpr bool kReturnsObject =
        std::is_pointer_v<Result> && !std::same_as<Result, IHostString*>;
    template <class Result>
    static constexpr bool kReturnsValue = !std::is_void_v<Result> && !kReturnsObject<Result>;

    template <class Object>
    void Remember(Object* object) {
        reached_[typeid(Object)] = object;
        using Whole = typename WholeInterface<Object>::type;
        if constexpr (!std::same_as<Whole, Object>) {
            reached_[typeid(Whole)] = dynamic_cast<Whole*>(object);
        }
    }

    CallRecord last_;
    std::size_t reportedSlot_ = 0;
    std::map<std::type_index, void*> reached_;
    Recorder recorder_{{.sink =
                            [this](const CallRecord& call) {
                                last_ = call;
                                reportedSlot_ = calledSlot;
                            },
                        .interceptor = {},
                        .recordReferences = false}};
};

TEST_F(StandIns, EveryOperationIsForwardedAndReportedAsItself) {
    std::size_t drivenBefore = 0;
    do {
        drivenBefore = driven_.size();
        known_ = 0;
#define OPERATION(interface, name)              \
    Drive(#interface, #name, &interface::name); \
    ++known_;
#include "host/SessionOperations.def"
    } while (driven_.size() > drivenBefore);
    EXPECT_EQ(driven_.size(), known_);
}

}  // namespace
}  // namespace refhost
