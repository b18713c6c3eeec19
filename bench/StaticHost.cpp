#include "bench/StaticHost.h"

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <type_traits>

#include "host/Implementation.h"
#include "reference_host/Sessions.h"
#include "reference_host/recorder/Recorder.h"

namespace bench {
namespace {

using namespace kelcore;
using namespace tses;

/// Plays a tape: knows how far the write has got.
class Reel {
public:
    void Wind(const AnswerTape& recorded) {
        next_ = recorded.Entries().data();
        end_ = next_ + recorded.Entries().size();
    }
    bool IsAtEnd() const { return next_ == end_; }

    template <class Number>
    Number TakeNumber() {
        const AnswerTape::Entry entry = Next();
        if constexpr (std::is_same_v<Number, double>) {
            return std::bit_cast<double>(entry);
        } else if constexpr (std::is_same_v<Number, float>) {
            return std::bit_cast<float>(static_cast<uint32>(entry));
        } else {
            return static_cast<Number>(entry);
        }
    }

    IHostString* TakeText() { return std::bit_cast<IHostString*>(Next()); }

    bool TakeWhetherThereIsAnObject() { return Next() != 0; }

    void TakeBytes(byte* buffer) {
        const void* const block = std::bit_cast<const void*>(Next());
        const uint64 size = Next();
        if (size > 0) {
            std::memcpy(buffer, block, size);
        }
    }

private:
    AnswerTape::Entry Next() {
        if (next_ == end_) {
            std::fputs("the plug-in asks what it did not ask before\n", stderr);
            std::abort();
        }
        return *next_++;
    }

    const AnswerTape::Entry* next_ = nullptr;
    const AnswerTape::Entry* end_ = nullptr;
};

constinit Reel tape;

/// The one object of its kind.
template <class Object>
constinit Object theStatic;

template <class Interface>
struct Static final : Implementation<Interface, Static<Interface>> {
    void AddReference() override {}
    void Release() override {}

    // The result first, then the outputs: the order of the tape.
    template <class Declaring, class Result, class... Parameters>
    static Result Answer(const char* /*name*/, Result (Declaring::* /*operation*/)(Parameters...),
                         std::type_identity_t<Parameters>... arguments) {
        if constexpr (std::is_void_v<Result>) {
            (Fill<Parameters>(arguments), ...);
        } else {
            const auto result = TakeResult<Result>();
            (Fill<Parameters>(arguments), ...);
            return result;
        }
    }

private:
    template <class Result>
    static Result TakeResult() {
        if constexpr (std::is_same_v<Result, IHostString*>) {
            return tape.TakeText();
        } else if constexpr (std::is_pointer_v<Result>) {
            using Object = typename WholeInterface<std::remove_pointer_t<Result>>::type;
            return tape.TakeWhetherThereIsAnObject() ? &theStatic<Static<Object>> : nullptr;
        } else {
            return tape.TakeNumber<Result>();
        }
    }

    template <class Parameter>
    static void Fill(std::type_identity_t<Parameter> argument) {
        if constexpr (std::is_same_v<Parameter, byte*>) {
            tape.TakeBytes(argument);
        } else if constexpr (std::is_pointer_v<Parameter> && kIsOutput<Parameter>) {
            *argument = tape.TakeNumber<std::remove_pointer_t<Parameter>>();
        } else if constexpr (kIsOutput<Parameter>) {
            argument = tape.TakeNumber<std::remove_reference_t<Parameter>>();
        }
    }
};

}  // namespace

AnswerTape RecordAnswers(refhost::Plugin& plugin, const std::u16string& path,
                         const orvo::Session& session) {
    AnswerTape answers;
    refhost::Recorder recorder(
        {.sink = [&](const refhost::CallRecord& call) { answers.Append(call); },
         .interceptor = {}});
    refhost::WriteOptions options;
    options.wrap = [&](IQuerySession& real) {
        return refhost::Ref<IQuerySession>::Retain(&recorder.Wrap(real));
    };
    const refhost::WriteResult written = refhost::WriteSession(plugin, path, session, options);
    if (written.result != SessionResult::Ok) {
        throw std::runtime_error("the session cannot be written" +
                                 (written.messages.empty() ? "" : ": " + written.messages.front()));
    }
    return answers;
}

IQuerySession& StaticHost(const AnswerTape& recorded) {
    tape.Wind(recorded);
    return theStatic<Static<IQuerySession>>;
}

bool StaticHostIsAtEnd() {
    return tape.IsAtEnd();
}

}  // namespace bench
