#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/SessionNode.h"
#include "tests/docs/FormatPage.h"
#include "tests/support/SerializerFixture.h"
#include "tests/support/SerializerTestAccess.h"

// Where docs/format.md puts the elements: the same in all of its parts, and as the reader's table.

namespace tses {
namespace {

using test::FormatPage;
using test::PageSection;
using Names = std::vector<std::u16string>;
using Places = std::set<std::pair<std::string, State>>;

constexpr const char* kInstruments = "with instrument tracks";

class FormatPlaces : public test::SerializerFixture {
protected:
    /// The names from the root to an element of that section.
    Names PathTo(const PageSection& section) const {
        Names path;
        if (!section.parents.empty()) {
            path = PathTo(page.Section(section.parents.front()));
        }
        path.push_back(kelcore::UTF8to16(section.names.front()));
        return path;
    }

    /// What the reader pushes at an element of that section.
    State StateOf(const PageSection& section) const {
        const auto node = refhost::SessionNode::Make();
        Serializer::Impl impl{WriterFault{}, MakeDomDocument};
        SerializerTestAccess::Attach(impl, &node->Edit());
        SAXContentHandler& content = SerializerTestAccess::Content(impl);
        content.StartDocument();
        for (const std::u16string& name : PathTo(section)) {
            content.StartElementEvent(u"", name, name, {{names::id.data(), u"1"}});
        }
        return SerializerTestAccess::Stack(impl).back();
    }

    std::map<std::string, State> AllStates() const {
        std::map<std::string, State> states;
        for (const PageSection& section : page.Sections()) {
            states[section.anchor] = StateOf(section);
        }
        return states;
    }

    Places OfThePage(bool instrumentTracks) const {
        const std::map<std::string, State> states = AllStates();
        Places places;
        for (const PageSection& section : page.Sections()) {
            if (section.read == "always" || (section.read == kInstruments && instrumentTracks)) {
                for (const std::string& parent : section.parents) {
                    for (const std::string& name : section.names) {
                        places.emplace(name, states.at(parent));
                    }
                }
            }
        }
        return places;
    }

    static Places OfTheTable() {
        const Serializer::Impl impl{WriterFault{}, MakeDomDocument};
        Places places;
        for (const ElementEntry& entry : SerializerTestAccess::Table(impl).Entries()) {
            places.emplace(kelcore::UTF16to8(entry.name), entry.parentState);
        }
        return places;
    }

    const FormatPage page;
};

TEST_F(FormatPlaces, OfAllSectionsAreThoseOfTheReadersTable) {
    EXPECT_EQ(OfThePage(true), OfTheTable());
}

TEST_F(FormatPlaces, WithoutInstrumentTracksAreThoseOfTheReadersTableToo) {
    const Places places = OfThePage(false);
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    EXPECT_EQ(places, OfTheTable());
}

TEST_F(FormatPlaces, ThatTheReaderTakesForTheSameHoldTheSame) {
    const std::map<std::string, State> states = AllStates();
    std::map<State, std::string> holds;
    for (const PageSection& section : page.Sections()) {
        if (section.read != "never") {
            const auto [first, isNew] = holds.emplace(states.at(section.anchor), section.holds);
            EXPECT_EQ(section.holds, first->second) << section.anchor;
        }
    }
}

TEST_F(FormatPlaces, OfWhatIsNeverReadArePassedOver) {
    std::size_t neverRead = 0;
    for (const PageSection& section : page.Sections()) {
        if (section.read == "never") {
            ++neverRead;
            EXPECT_EQ(StateOf(section), states::unknown) << section.anchor;
        } else {
            EXPECT_NE(StateOf(section), states::unknown) << section.anchor;
        }
    }
    EXPECT_EQ(neverRead, 1u);
}

TEST_F(FormatPlaces, AreTheSameSeenFromTheParentAndFromTheChild) {
    std::set<std::pair<std::string, std::string>> down;
    std::set<std::pair<std::string, std::string>> up;
    for (const PageSection& section : page.Sections()) {
        for (const std::string& child : section.children) {
            down.emplace(section.anchor, child);
        }
        for (const std::string& parent : section.parents) {
            up.emplace(parent, section.anchor);
        }
    }
    EXPECT_EQ(down, up);
}

TEST_F(FormatPlaces, OfTheTreeAreThoseOfTheSections) {
    std::set<std::pair<std::string, std::string>> places;
    std::set<std::string> names = {"orvo"};
    for (const PageSection& section : page.Sections()) {
        for (const std::string& anchor : section.parents) {
            for (const std::string& parent : page.Section(anchor).names) {
                for (const std::string& name : section.names) {
                    places.emplace(parent, name);
                    names.insert(name);
                }
            }
        }
    }
    std::set<std::string> inTree = {"orvo"};
    for (const auto& place : page.Tree()) {
        EXPECT_TRUE(places.contains(place)) << place.first << " " << place.second;
        inTree.insert(place.second);
    }
    EXPECT_EQ(inTree, names);
}

TEST_F(FormatPlaces, EverySectionSaysAllOfItself) {
    for (const PageSection& section : page.Sections()) {
        EXPECT_FALSE(section.holds.empty()) << section.anchor;
        EXPECT_FALSE(section.text.empty()) << section.anchor;
        EXPECT_FALSE(section.written.empty()) << section.anchor;
        EXPECT_TRUE(section.read == "always" || section.read == kInstruments ||
                    section.read == "never")
            << section.anchor << ": " << section.read;
        EXPECT_EQ(section.parents.empty(), section.anchor == "orvo") << section.anchor;
    }
}

}  // namespace
}  // namespace tses
