#include "plugin/xml/SessionXMLReader.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <new>
#include <thread>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "tests/plugin/xml/SessionXMLReaderFixture.h"

namespace tses {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(SessionXMLReaderTest, EventsCarryNamesAttributesAndText) {
    EXPECT_TRUE(ParseText("<a b='1'><c/>text</a>"));
    EXPECT_THAT(events.lines, ElementsAre("start of document", "<a||a b=1", "<c||c", ">c||c",
                                          "'text'", ">a||a", "end of document"));
    EXPECT_THAT(traced, IsEmpty());
}

TEST_F(SessionXMLReaderTest, APrefixedElementHasItsLocalNameAndItsNamespace) {
    EXPECT_TRUE(ParseText("<p:a xmlns:p='urn:x'/>"));
    EXPECT_EQ(events.lines.at(1), "<a|urn:x|p:a");
}

TEST_F(SessionXMLReaderTest, AnEndTagHasTheNamespaceOfItsStartTag) {
    EXPECT_TRUE(ParseText("<a xmlns='urn:x'><p:b xmlns:p='urn:y'> <c xmlns=''/> </p:b> </a>"));
    EXPECT_THAT(events.lines, ElementsAre("start of document", "<a|urn:x|a", "<b|urn:y|p:b", "' '",
                                          "<c||c", ">c||c", "' '", ">b|urn:y|p:b", "' '",
                                          ">a|urn:x|a", "end of document"));
}

TEST_F(SessionXMLReaderTest, AnAttributeMayHaveAnEmptyValue) {
    EXPECT_TRUE(ParseText("<a b=''/>"));
    EXPECT_EQ(events.lines.at(1), "<a||a b=");
}

TEST_F(SessionXMLReaderTest, AttributesComeSortedByName) {
    EXPECT_TRUE(ParseText("<a zeta='1' Alpha='2' beta='3'/>"));
    EXPECT_EQ(events.lines.at(1), "<a||a Alpha=2 beta=3 zeta=1");
}

TEST_F(SessionXMLReaderTest, APrefixedAttributeCountsUnderItsLocalName) {
    EXPECT_TRUE(ParseText("<a xmlns:p='urn:x' p:b='1'/>"));
    EXPECT_EQ(events.lines.at(1), "<a||a b=1");
}

TEST_F(SessionXMLReaderTest, AnUnprefixedAttributeWinsOverAPrefixedOneOfItsName) {
    EXPECT_TRUE(ParseText("<a xmlns:p='urn:x' b='plain' p:b='prefixed'/>"));
    EXPECT_EQ(events.lines.at(1), "<a||a b=plain");
    events.lines.clear();
    EXPECT_TRUE(ParseText("<a xmlns:p='urn:x' p:b='prefixed' b='plain'/>"));
    EXPECT_EQ(events.lines.at(1), "<a||a b=plain");
}

TEST_F(SessionXMLReaderTest, ThePrefixThatNeedsNoDeclarationIsAPrefixToo) {
    EXPECT_TRUE(ParseText("<a xml:id='prefixed' id='plain'/>"));
    EXPECT_EQ(events.lines.at(1), "<a||a id=plain");
    events.lines.clear();
    EXPECT_TRUE(ParseText("<a id='plain' xml:id='prefixed' xml:lang='en' xmlfoo='x'/>"));
    EXPECT_EQ(events.lines.at(1), "<a||a id=plain lang=en xmlfoo=x");
}

TEST_F(SessionXMLReaderTest, ElementsWithAndWithoutNamespacesMayBeNested) {
    EXPECT_TRUE(
        ParseText("<a>1<p:b xmlns:p='u' p:k='v'>2<c d='3'/>4<e>5</e></p:b>6<f xml:k='7'/>"
                  "<g xmlns='w'><h/></g><i>8<j/></i></a>"));
    EXPECT_EQ(events.lines, (std::vector<std::string>{"start of document",
                                                      "<a||a",
                                                      "'1'",
                                                      "<b|u|p:b k=v",
                                                      "'2'",
                                                      "<c||c d=3",
                                                      ">c||c",
                                                      "'4'",
                                                      "<e||e",
                                                      "'5'",
                                                      ">e||e",
                                                      ">b|u|p:b",
                                                      "'6'",
                                                      "<f||f k=7",
                                                      ">f||f",
                                                      "<g|w|g",
                                                      "<h|w|h",
                                                      ">h|w|h",
                                                      ">g|w|g",
                                                      "<i||i",
                                                      "'8'",
                                                      "<j||j",
                                                      ">j||j",
                                                      ">i||i",
                                                      ">a||a",
                                                      "end of document"}));
}

TEST_F(SessionXMLReaderTest, DeclarationsOfNamespacesAreNotAttributes) {
    EXPECT_TRUE(ParseText("<a xmlns='urn:x' b='1' xmlns:p='urn:y'><c d='2'/></a>"));
    EXPECT_EQ(events.lines.at(1), "<a|urn:x|a b=1");
    EXPECT_EQ(events.lines.at(2), "<c|urn:x|c d=2");
}

TEST_F(SessionXMLReaderTest, AnUnprefixedAttributeWinsWhereverItStandsAmongPrefixedOnesOfItsName) {
    for (const char* const attributes :
         {"b='plain' p:b='1' q:b='2'", "p:b='1' b='plain' q:b='2'", "p:b='1' q:b='2' b='plain'"}) {
        events.lines.clear();
        EXPECT_TRUE(
            ParseText(std::string("<a xmlns:p='urn:x' xmlns:q='urn:y' ") + attributes + "/>"));
        EXPECT_EQ(events.lines.at(1), "<a||a b=plain") << attributes;
    }
}

TEST_F(SessionXMLReaderTest, CharacterDataThatTheParserSplitsArrivesInSeveralPieces) {
    EXPECT_TRUE(ParseText("<a>one &amp; two<![CDATA[ three]]></a>"));
    const std::vector<std::string> pieces(events.lines.begin() + 2, events.lines.end() - 2);
    EXPECT_GT(pieces.size(), 1u);
    std::string joined;
    for (const std::string& piece : pieces) {
        joined += piece.substr(1, piece.size() - 2);
    }
    EXPECT_EQ(joined, "one & two three");
}

TEST_F(SessionXMLReaderTest, TheAttributesOfOneElementDoNotReachTheNext) {
    EXPECT_TRUE(ParseText("<a b='1' c='2'><d e='3'/></a>"));
    EXPECT_EQ(events.lines.at(2), "<d||d e=3");
}

TEST_F(SessionXMLReaderTest, MalformedXmlIsAFatalErrorWithItsPlace) {
    EXPECT_FALSE(ParseText("<a>\n  <b></c>\n</a>"));
    ASSERT_THAT(events.problems, SizeIs(1));
    EXPECT_THAT(events.problems[0], AllOf(StartsWith("fatal 2:"), HasSubstr("document.orvo]")));
    EXPECT_THAT(traced, ElementsAre("app::XMLReader: Unexpected XMLReader Exception"));
}

TEST_F(SessionXMLReaderTest, AFatalErrorThatIsLetPassStillFailsTheParse) {
    events.throwOnError = false;
    EXPECT_FALSE(ParseText("<a><b></a>"));
    EXPECT_THAT(events.problems, SizeIs(1));
    EXPECT_THAT(traced, IsEmpty());
}

TEST_F(SessionXMLReaderTest, AFatalErrorDoesNotStickToTheReader) {
    events.throwOnError = false;
    SessionXMLReader reader(&events, &events);
    EXPECT_FALSE(reader.Parse(kelcore::PathFromBytes(folder.Write("bad", "<a>").string())));
    EXPECT_TRUE(reader.Parse(kelcore::PathFromBytes(folder.Write("good", "<a/>").string())));
}

TEST_F(SessionXMLReaderTest, WhatAHandlerThrowsFailsTheParseAndIsTraced) {
    events.throwAtElement = "b";
    EXPECT_FALSE(ParseText("<a><b/><c/></a>"));
    EXPECT_EQ(events.lines.back(), "<b||b");
    EXPECT_THAT(traced, ElementsAre("app::XMLReader: Unexpected XMLReader Exception",
                                    "app::XMLReader: refused"));
}

TEST_F(SessionXMLReaderTest, WhatAHandlerThrowsThatIsNoExceptionIsTraced) {
    events.atEachElement = [] { throw 42; };
    EXPECT_FALSE(ParseText("<a/>"));
    EXPECT_THAT(traced, ElementsAre("app::XMLReader: Unexpected XMLReader Exception",
                                    "app::XMLReader: the host threw something that is not a "
                                    "std::exception"));
}

TEST_F(SessionXMLReaderTest, ALackOfMemoryIsTraced) {
    events.atEachElement = [] { throw std::bad_alloc(); };
    EXPECT_FALSE(ParseText("<a/>"));
    events.atEachElement = [] { throw xercesc::OutOfMemoryException(); };
    EXPECT_FALSE(ParseText("<a/>"));
    EXPECT_THAT(traced, ElementsAre("app::XMLReader: Unexpected XMLReader Exception",
                                    "app::XMLReader: memory ran out",
                                    "app::XMLReader: Unexpected XMLReader Exception",
                                    "app::XMLReader: memory ran out"));
}

TEST_F(SessionXMLReaderTest, WhatTheParserItselfThrowsIsTracedWithItsMessage) {
    events.throwParserExceptionAtElement = "b";
    EXPECT_FALSE(ParseText("<a><b/></a>"));
    EXPECT_THAT(traced,
                ElementsAre("app::XMLReader: XMLReader exception message is: \nout of tune"));
}

TEST_F(SessionXMLReaderTest, AParseWithinAParseFailsAndTheLibrarysMessageIsTraced) {
    const std::u16string path =
        kelcore::PathFromBytes(folder.Write("document.orvo", "<a/>").string());
    SessionXMLReader reader(&events, &events);
    events.atEachElement = [&] {
        EXPECT_FALSE(reader.Parse(path));
        throw std::runtime_error("the parse outside has lost its place");
    };
    EXPECT_FALSE(reader.Parse(path));
    EXPECT_THAT(traced, ElementsAre("app::XMLReader: XMLReader exception message is: \n"
                                    "parsing in progress",
                                    "app::XMLReader: Unexpected XMLReader Exception",
                                    "app::XMLReader: the parse outside has lost its place"));
}

TEST_F(SessionXMLReaderTest, NothingIsTracedWhileTheCategoryIsOff) {
    kelcore::trace::SetEnabled(kelcore::trace::kReaderCategory, false);
    events.throwAtElement = "a";
    EXPECT_FALSE(ParseText("<a/>"));
    EXPECT_THAT(traced, IsEmpty());
}

TEST_F(SessionXMLReaderTest, AMissingFileFailsWithoutAMessage) {
    EXPECT_FALSE(ParseFile(folder / "missing.orvo"));
    EXPECT_THAT(events.problems, IsEmpty());
    EXPECT_THAT(events.lines, IsEmpty());
    EXPECT_THAT(traced, IsEmpty());
}

TEST_F(SessionXMLReaderTest, TellsWhetherItOpenedTheFile) {
    const auto hasOpened = [&](const std::filesystem::path& path) {
        SessionXMLReader reader(&events, &events);
        reader.Parse(kelcore::PathFromBytes(path.string()));
        return reader.HasOpenedFile();
    };
    EXPECT_TRUE(hasOpened(folder.Write("good.orvo", "<a/>")));
    EXPECT_TRUE(hasOpened(folder.Write("refused.orvo", "<!DOCTYPE a><a/>")));
    EXPECT_TRUE(hasOpened(folder.Write("empty.orvo", "")));
    EXPECT_FALSE(hasOpened(folder / "missing.orvo"));
    EXPECT_FALSE(hasOpened(folder.Path()));
}

TEST_F(SessionXMLReaderTest, AnEmptyFileFailsWithAMessage) {
    EXPECT_FALSE(ParseText(""));
    EXPECT_THAT(events.problems, SizeIs(1));
}

TEST_F(SessionXMLReaderTest, AFolderFailsLikeAMissingFile) {
    EXPECT_FALSE(ParseFile(folder.Path()));
    EXPECT_THAT(events.problems, IsEmpty());
    EXPECT_THAT(traced, IsEmpty());
}

TEST_F(SessionXMLReaderTest, APipeWithoutAWriterFailsAtOnce) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(ParseFile(folder / "pipe"));
    EXPECT_THAT(events.problems, SizeIs(1));
}

TEST_F(SessionXMLReaderTest, APipeIsNotOpened) {
    const std::string path = folder / "pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(::inotify_add_watch(watch, path.c_str(), IN_OPEN), 0);
    EXPECT_FALSE(ParseFile(path));
    std::array<char, 1024> opened;
    EXPECT_LT(::read(watch, opened.data(), opened.size()), 0);
    ::close(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_GT(::read(watch, opened.data(), opened.size()), 0) << "the watch must notice an open";
    ::close(watch);
}

TEST_F(SessionXMLReaderTest, ParsesOfOneReaderRunOneAfterTheOther) {
    const std::u16string path =
        kelcore::PathFromBytes(folder.Write("document.orvo", "<a><b/></a>").string());
    SessionXMLReader reader(&events, &events);
    std::thread other;
    events.atEachElement = [&] {
        if (!other.joinable()) {
            other = std::thread([&] { EXPECT_TRUE(reader.Parse(path)); });
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    };
    EXPECT_TRUE(reader.Parse(path));
    other.join();
    const std::vector<std::string> once = {"start of document", "<a||a", "<b||b", ">b||b", ">a||a",
                                           "end of document"};
    std::vector<std::string> twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(events.lines, twice);
}

TEST_F(SessionXMLReaderTest, ASocketFailsWithAMessage) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = (folder / "socket").string();
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::copy(path.begin(), path.end(), address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_FALSE(ParseFile(path));
    EXPECT_THAT(events.problems, SizeIs(1));
    ::close(socket);
}

TEST_F(SessionXMLReaderTest, AFileWhoseBytesCannotBeReadFails) {
    // Opens as a regular file but cannot be read at its beginning.
    EXPECT_FALSE(ParseFile("/proc/self/mem"));
    EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(SessionXMLReaderTest, AReaderMadeBeforeTheXmlLibraryStartedParsesNothing) {
    StopXerces();
    SessionXMLReader reader(&events, &events);
    StartXerces();
    EXPECT_FALSE(reader.Parse(kelcore::PathFromBytes(folder.Write("good", "<a/>").string())));
    EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(SessionXMLReaderTest, NothingParsesWhileTheXmlLibraryIsNotStarted) {
    StopXerces();
    EXPECT_FALSE(ParseText("<a/>"));
    EXPECT_THAT(events.lines, IsEmpty());
    EXPECT_THAT(events.problems, IsEmpty());
    EXPECT_THAT(traced, IsEmpty());
    StartXerces();
    EXPECT_TRUE(ParseText("<a/>"));
}

TEST_F(SessionXMLReaderTest, CallbacksWithoutAReceiverAreDropped) {
    SessionXMLReader reader(nullptr, nullptr);
    EXPECT_TRUE(
        reader.Parse(kelcore::PathFromBytes(folder.Write("good", "<a b='1'>x</a>").string())));
    EXPECT_FALSE(reader.Parse(kelcore::PathFromBytes(folder.Write("bad", "<a>").string())));
}

TEST_F(SessionXMLReaderTest, NamesInOtherScriptsOpen) {
    EXPECT_TRUE(ParseFile(folder.Write("\xE6\x9B\xB2 \xF0\x9F\x8E\xB5.orvo", "<a/>")));
    EXPECT_TRUE(ParseFile(folder.Write("latin \xE9.orvo", "<a/>")));
}

TEST_F(SessionXMLReaderTest, APathThatIsTooLongOnlyBecauseOfEmptyStepsOpens) {
    folder.Write("document.orvo", "<a/>");
    std::string path = folder.Path().string();
    for (std::size_t i = 0; i < PATH_MAX; ++i) {
        path += "/.";
    }
    EXPECT_TRUE(ParseFile(path + "/document.orvo"));
    EXPECT_THAT(events.problems, IsEmpty());
}

TEST(LongPaths, OnlyAPathOf260UnitsAndMoreTakesTheLongForm) {
    const std::u16string longName(257, u'x');
    EXPECT_EQ(OpenablePath(u"./" + longName).size(), 259u);
    EXPECT_EQ(OpenablePath(u"./" + longName), u"./" + longName);
    EXPECT_EQ(OpenablePath(u"./x" + longName),
              kelcore::FileUtils::PrepAsLongPathName(u"./x" + longName));
    EXPECT_NE(OpenablePath(u"./x" + longName), u"./x" + longName);
}

}  // namespace
}  // namespace tses
