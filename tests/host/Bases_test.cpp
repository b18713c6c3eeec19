// Proves that the bases do what they say: every operation of each can be called, gives nothing and
// leaves its outputs alone; references are counted; and a host made of bare bases reads and writes.

#include "host/Bases.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "host/Implementation.h"
#include "host/Text.h"
#include "reference_host/Plugin.h"
#include "reference_host/Sessions.h"
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"

namespace tses {
namespace {

// Every operation ---------------------------------------------------------------------------------

template <class Interface>
struct BaseOf;
#define BASE(name, interface)  \
    template <>                \
    struct BaseOf<interface> { \
        using type = name;     \
    };
#include "host/Operations.def"

// An argument of any type. Outputs refer to a number that is not 0.
template <class Parameter>
class Argument {
public:
    Parameter Get() {
        if constexpr (std::is_pointer_v<Parameter> && kIsOutput<Parameter>) {
            return &value_;
        } else if constexpr (std::is_reference_v<Parameter>) {
            return value_;
        } else {
            return Parameter{};
        }
    }
    bool IsUnchanged() const { return value_ == kStart; }

private:
    using Plain = std::remove_pointer_t<std::remove_reference_t<Parameter>>;
    using Value = std::conditional_t<kIsOutput<Parameter>, Plain, int>;
    static constexpr Value kStart = static_cast<Value>(1);
    Value value_ = kStart;
};

template <class Interface, class Result, class... Parameters>
void ExpectNothingFor(Result (Interface::*operation)(Parameters...),
                      Argument<Parameters>... arguments) {
    typename BaseOf<typename WholeInterface<Interface>::type>::type object;
    Interface& face = object;
    if constexpr (std::is_void_v<Result>) {
        (face.*operation)(arguments.Get()...);
    } else {
        EXPECT_EQ((face.*operation)(arguments.Get()...), Result{});
    }
    EXPECT_TRUE((arguments.IsUnchanged() && ...));
    EXPECT_EQ(object.ReferenceCount(), 1U);
}

template <class Interface, class Result, class... Parameters>
void ExpectNothing(const std::string& name, Result (Interface::*operation)(Parameters...)) {
    SCOPED_TRACE(name);
    ExpectNothingFor(operation, Argument<Parameters>()...);
}

// The operations of IHostObject are those that count.
template <class Result, class... Parameters>
void ExpectNothing(const std::string& /*name*/,
                   Result (IHostObject::* /*operation*/)(Parameters...)) {}

TEST(Bases, EveryOperationGivesNothingAndLeavesItsOutputsAlone) {
#define OPERATION(interface, name) ExpectNothing(#interface "." #name, &interface::name);
#define UNUSED_SLOT(interface, name) OPERATION(interface, name)
#include "host/Operations.def"
}

TEST(Bases, AreThereForEveryInterfaceThatAHostImplements) {
    std::set<std::string> bare;
#define INTERFACE(name, base) bare.insert(#name);
#include "host/Operations.def"
#define BASE(name, interface) bare.erase(#interface);
#include "host/Operations.def"
    EXPECT_EQ(bare, (std::set<std::string>{"IHostObject", "IEditAudioTrack", "IQueryAudioTrack",
                                           "IEditMetronomeInfo", "IQueryMetronomeInfo"}));
}

TEST(Bases, CastToTheirPrivateInterface) {
    EditAudioTrackBase track;
    IEditAudioTrack& face = track;
    EXPECT_EQ(dynamic_cast<IEditAudioTrackPrivate*>(&face), &track);
}

// Counting ----------------------------------------------------------------------------------------

struct Noted final : EditFileBase {
    explicit Noted(bool& gone) : gone_(gone) {}
    ~Noted() override { gone_ = true; }

private:
    bool& gone_;
};

TEST(Counted, AnOwnedObjectGoesWithItsPointer) {
    bool gone = false;
    MakeOwned<Noted>(gone).reset();
    EXPECT_TRUE(gone);
}

TEST(Counted, AnOwnedObjectOutlivesItsPointerWhileItIsReferenced) {
    bool gone = false;
    Owned<Noted> owned = MakeOwned<Noted>(gone);
    Noted& object = *owned;
    object.AddReference();
    EXPECT_EQ(object.ReferenceCount(), 2U);
    owned.reset();
    EXPECT_FALSE(gone);
    object.Release();
    EXPECT_TRUE(gone);
}

TEST(Counted, AVariableIsNotDeletedByReferencesThatComeAndGo) {
    bool gone = false;
    {
        Noted object(gone);
        object.AddReference();
        object.Release();
        EXPECT_FALSE(gone);
        EXPECT_EQ(object.ReferenceCount(), 1U);
    }
    EXPECT_TRUE(gone);
}

TEST(CountedDeathTest, AVariableMustNotGoWhileItIsReferenced) {
    const auto go = [] {
        EditFileBase object;
        object.AddReference();
    };
    EXPECT_DEATH(go(), "still refers to it");
}

TEST(HostText, GivesItsText) {
    HostText text(u"Tür");
    EXPECT_EQ(text.GetLength(), 3U);
    EXPECT_EQ(std::u16string(text.GetData(), text.GetLength()), u"Tür");
    text.value.clear();
    EXPECT_EQ(text.GetLength(), 0U);
}

// Hosts -------------------------------------------------------------------------------------------

// A session with tracks, all of which are on the heap, and a metronome.
struct BareTracks final : EditSessionBase {
    struct Metronome final : EditMetronomeInfoBase {
        EditAudioTrackBase track;
        IEditAudioTrack* GetTrack() override { return &track; }
    };

    std::vector<Owned<EditAudioTrackBase>> tracks;
    Metronome metronome;

    IEditAudioTrack* GetAudioTrack(kelcore::uint32 /*id*/) override {
        return tracks.emplace_back(MakeOwned<EditAudioTrackBase>()).get();
    }
    IEditMetronomeInfo* GetMetronomeInfo() override { return &metronome; }
};

struct BareMetronome final : QuerySessionBase {
    QueryMetronomeInfoBase metronome;
    IQueryMetronomeInfo* GetMetronomeInfo() override { return &metronome; }
};

class BareHost : public testing::Test {
protected:
    BareHost() { refhost::UseFeatureDefaults(); }

    SessionResult Read(const char* session, IEditSession& into) {
        const auto path = test::SourceFolder() / "examples" / session;
        return plugin_.Read(path.u16string(), into);
    }

    const test::TemporaryFolder folder_;
    refhost::Plugin plugin_;
};

TEST_F(BareHost, ReadsASessionWithoutTracks) {
    EditSessionBase session;
    EXPECT_EQ(Read("sound-library/sound-library.orvo", session), SessionResult::Ok);
    EXPECT_EQ(session.ReferenceCount(), 1U);
}

TEST_F(BareHost, HasToGiveTracksToReadThem) {
    EditSessionBase session;
    EXPECT_EQ(Read("music/music.orvo", session), SessionResult::ReadFailed);
    EXPECT_EQ(session.ReferenceCount(), 1U);
}

TEST_F(BareHost, ReadsEveryTrack) {
    for (const char* const name : {"music/music.orvo", "radio-spot/radio-spot.orvo"}) {
        BareTracks session;
        EXPECT_EQ(Read(name, session), SessionResult::Ok) << name;
        EXPECT_GT(session.tracks.size(), 1U) << name;
        for (const auto& track : session.tracks) {
            EXPECT_EQ(track->ReferenceCount(), 1U) << name;
        }
        EXPECT_EQ(session.ReferenceCount(), 1U) << name;
    }
}

TEST_F(BareHost, HasToGiveAMetronomeToWrite) {
    QuerySessionBase session;
    EXPECT_EQ(plugin_.Write((folder_ / "a.orvo").u16string(), session), SessionResult::WriteFailed);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.orvo"));
}

TEST_F(BareHost, WritesAnEmptySession) {
    BareMetronome session;
    const std::u16string path = (folder_ / "a.orvo").u16string();
    ASSERT_EQ(plugin_.Write(path, session), SessionResult::Ok);
    EXPECT_EQ(session.ReferenceCount(), 1U);
    EXPECT_EQ(session.metronome.ReferenceCount(), 1U);

    const refhost::ReadResult read = refhost::ReadSession(plugin_, path);
    EXPECT_EQ(read.result, SessionResult::Ok);
    EXPECT_TRUE(read.messages.empty());
    EXPECT_TRUE(read.session.files.empty());
    EXPECT_TRUE(read.session.audioTracks.empty());
    EXPECT_EQ(read.session.sampleRate, 0U);
}

}  // namespace
}  // namespace tses
