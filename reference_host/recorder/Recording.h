#pragma once

#include <boost/core/demangle.hpp>
#include <concepts>
#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeindex>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/Implementation.h"
#include "reference_host/recorder/CallRecord.h"
#include "reference_host/recorder/Recorder.h"

/// What the stand-ins of a recorder are made of. Only the recorder's own files include this.
namespace refhost {

/// A stand-in for any interface, as the recording owns it.
class AnyStandIn {
public:
    virtual ~AnyStandIn() = default;
    virtual tses::IHostObject& Face() = 0;
};

/// The state that all stand-ins of one recorder share.
class Recording {
public:
    explicit Recording(Recorder::Options options) : options_(std::move(options)) {}
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    /// The stand-in for a host object, always the same one for the same object; null for null.
    template <class Interface>
    Interface* StandInFor(Interface* real);

    /// The number of an object; a new number if the object has none.
    std::uint64_t NumberOf(tses::IHostObject& real);

    bool RecordsReferences() const { return options_.recordReferences; }
    CallRecord Begin(std::string_view interfaceName, std::uint64_t objectNumber,
                     std::string_view operation);
    CallDecision Decide(const CallRecord& call) const;
    void Report(const CallRecord& call) const;

private:
    using Key = std::pair<tses::IHostObject*, std::type_index>;

    template <class Interface>
    std::unique_ptr<AnyStandIn> Make(Interface& real);

    Recorder::Options options_;
    std::uint64_t sequence_ = 0;
    std::unordered_map<tses::IHostObject*, std::uint64_t> numbers_;
    std::map<Key, std::unique_ptr<AnyStandIn>> standIns_;
};

/// "IEditFile" for `tses::IEditFile`.
template <class Interface>
const std::string& InterfaceName() {
    static const std::string name = [] {
        const std::string full = boost::core::demangle(typeid(Interface).name());
        return full.substr(full.rfind(':') + 1);
    }();
    return name;
}

/// An argument that the operation only writes to.
struct OutputArgument {};

template <class Number>
requires std::is_arithmetic_v<Number> TraceValue ToTraceValue(Number value) {
    if constexpr (std::same_as<Number, bool> || std::floating_point<Number>) {
        return value;
    } else if constexpr (std::signed_integral<Number>) {
        return static_cast<std::int64_t>(value);
    } else {
        return static_cast<std::uint64_t>(value);
    }
}
TraceValue ToTraceValue(const kelcore::char16* text);
TraceValue ToTraceValue(tses::IHostString* text);

/// Lists the arguments of a call; a pointer with its count is one argument.
struct ArgumentList {
    std::vector<TraceValue>& values;

    void Add() const {}
    template <class... Rest>
    void Add(OutputArgument, Rest... rest) const {
        Add(rest...);
    }
    template <class Element, class... Rest>
    requires std::same_as<Element, kelcore::uint32> || std::same_as<Element, kelcore::byte>
    void Add(const Element* data, kelcore::uint32 count, Rest... rest) const {
        values.emplace_back(std::vector<Element>(data, data + count));
        Add(rest...);
    }
    template <class First, class... Rest>
    void Add(First first, Rest... rest) const {
        values.push_back(ToTraceValue(first));
        Add(rest...);
    }
};

/// Lists what a call left in its outputs.
struct OutputList {
    CallRecord& record;

    template <class Parameter>
    void Add(std::type_identity_t<Parameter> argument) const {
        if constexpr (std::is_lvalue_reference_v<Parameter>) {
            record.outputs.push_back(ToTraceValue(argument));
        } else if constexpr (std::same_as<Parameter, kelcore::byte*>) {
            record.buffer = argument;
        } else if constexpr (tses::kIsOutput<Parameter>) {
            record.outputs.push_back(ToTraceValue(*argument));
        }
    }
};

/// Stands in for one object of the host: forwards every call to it and holds a reference to it.
template <class Interface>
class StandIn final : public tses::Implementation<Interface, StandIn<Interface>>,
                      public AnyStandIn {
public:
    StandIn(Recording& recording, Interface& real)
        : recording_(recording), real_(real), number_(recording.NumberOf(real)) {
        real_.AddReference();
    }
    ~StandIn() override { real_.Release(); }

    void AddReference() override {
        ReportCounting("AddReference");
        real_.AddReference();
    }
    void Release() override {
        ReportCounting("Release");
        real_.Release();
    }
    tses::IHostObject& Face() override { return *this; }

    template <class Declaring, class Result, class... Parameters>
    Result Answer(std::string_view operation, Result (Declaring::*member)(Parameters...),
                  std::type_identity_t<Parameters>... arguments) {
        CallRecord record = recording_.Begin(InterfaceName<Declaring>(), number_, operation);
        ArgumentList{record.arguments}.Add(Input<Parameters>(arguments)...);
        const CallDecision decision = recording_.Decide(record);
        if (decision.kind == CallDecision::Kind::Throw) {
            recording_.Report(record);
            std::rethrow_exception(decision.exception);
        }
        if constexpr (std::is_pointer_v<Result>) {
            if (decision.kind == CallDecision::Kind::ReturnNull) {
                return Finish<Result>(record, nullptr);
            }
        }
        if constexpr (std::same_as<Result, tses::IHostString*>) {
            if (decision.kind == CallDecision::Kind::ReturnText) {
                recording_.Report(record);
                return decision.text;
            }
        }
        if constexpr (std::is_arithmetic_v<Result>) {
            if (decision.kind == CallDecision::Kind::ReturnNumber) {
                return Finish<Result>(record, static_cast<Result>(decision.number));
            }
        }
        if constexpr (std::is_void_v<Result>) {
            if (decision.kind != CallDecision::Kind::ReturnNumber) {
                Forward(record, member, arguments...);
            }
            (OutputList{record}.template Add<Parameters>(arguments), ...);
            recording_.Report(record);
        } else {
            Result result = Forward(record, member, arguments...);
            (OutputList{record}.template Add<Parameters>(arguments), ...);
            return Finish<Result>(record, result);
        }
    }

private:
    // Reports the call even if it throws.
    template <class Member, class... Arguments>
    auto Forward(const CallRecord& record, Member member, Arguments&... arguments) {
        try {
            return (real_.*member)(arguments...);
        } catch (...) {
            recording_.Report(record);
            throw;
        }
    }

    template <class Parameter>
    static auto Input(const std::remove_reference_t<Parameter>& argument) {
        if constexpr (tses::kIsOutput<Parameter>) {
            return OutputArgument{};
        } else {
            return argument;
        }
    }

    void ReportCounting(std::string_view operation) {
        if (recording_.RecordsReferences()) {
            recording_.Report(recording_.Begin(InterfaceName<Interface>(), number_, operation));
        }
    }

    // Notes the result, reports the call, and returns what the caller gets in place of the result.
    template <class Result>
    Result Finish(CallRecord& record, Result result) {
        Result given = result;
        if constexpr (!std::is_pointer_v<Result> || std::same_as<Result, tses::IHostString*>) {
            record.value = ToTraceValue(result);
        } else {
            using Object = std::remove_pointer_t<Result>;
            if constexpr (!std::same_as<Object, tses::IHostObject>) {
                given = recording_.StandInFor(result);
            }
            record.returned = ObjectResult{InterfaceName<Object>(),
                                           result == nullptr ? 0 : recording_.NumberOf(*result)};
        }
        recording_.Report(record);
        return given;
    }

    Recording& recording_;
    Interface& real_;
    std::uint64_t number_;
};

template <class Interface>
Interface* Recording::StandInFor(Interface* real) {
    if (real == nullptr) {
        return nullptr;
    }
    std::unique_ptr<AnyStandIn>& standIn = standIns_[{real, typeid(Interface)}];
    if (!standIn) {
        standIn = Make(*real);
    }
    return static_cast<Interface*>(&standIn->Face());
}

template <class Interface>
std::unique_ptr<AnyStandIn> Recording::Make(Interface& real) {
    using Whole = typename tses::WholeInterface<Interface>::type;
    if constexpr (!std::same_as<Whole, Interface>) {
        if (auto* whole = dynamic_cast<Whole*>(&real)) {
            return std::make_unique<StandIn<Whole>>(*this, *whole);
        }
    }
    return std::make_unique<StandIn<Interface>>(*this, real);
}

}  // namespace refhost
