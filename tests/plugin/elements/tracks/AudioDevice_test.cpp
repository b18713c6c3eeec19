#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/SerializerFixture.h"

namespace tses {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class AudioDevice : public test::SerializerFixture {};

TEST_F(AudioDevice, BothIdentifiersAndThePortsReachTheHostInTheOrderOfTheFile) {
    EXPECT_THAT(
        ReadInRoot("<audioDevice inputID='in' outputID='out'><outputPort id='2' name='L'/>"
                   "<inputPort id='-1' name='Mic'/><inputPort id='5' name='Line'/></audioDevice>")
            .calls,
        ElementsAre(
            "IEditSession#1.SetInputDeviceId(\"in\")", "IEditSession#1.SetOutputDeviceId(\"out\")",
            "IEditSession#1.AddOutputPort(2,\"L\")", "IEditSession#1.AddInputPort(-1,\"Mic\")",
            "IEditSession#1.AddInputPort(5,\"Line\")"));
}

TEST_F(AudioDevice, WithoutAttributesNeitherIdentifierChanges) {
    EXPECT_THAT(ReadInRoot("<audioDevice/>").calls, IsEmpty());
}

TEST_F(AudioDevice, OneAttributeSetsBothIdentifiers) {
    EXPECT_THAT(ReadInRoot("<audioDevice outputID='out'/>").calls,
                ElementsAre("IEditSession#1.SetInputDeviceId(\"\")",
                            "IEditSession#1.SetOutputDeviceId(\"out\")"));
    EXPECT_THAT(ReadInRoot("<audioDevice colour='red'/>").calls,
                ElementsAre("IEditSession#1.SetInputDeviceId(\"\")",
                            "IEditSession#1.SetOutputDeviceId(\"\")"));
}

TEST_F(AudioDevice, APortWithoutAttributesIsZeroWithoutAName) {
    EXPECT_THAT(
        ReadInRoot("<audioDevice><inputPort/><outputPort id='x'/></audioDevice>").calls,
        ElementsAre("IEditSession#1.AddInputPort(0,\"\")", "IEditSession#1.AddOutputPort(0,\"\")"));
}

TEST_F(AudioDevice, IsWrittenLastWithBothIdentifiersEvenIfTheyAreEmpty) {
    EXPECT_THAT(*Write({}).file, HasSubstr("<audioDevice inputID=\"\" outputID=\"\"/>\n\n</orvo>"));
}

TEST_F(AudioDevice, InputPortsAreWrittenBeforeOutputPorts) {
    orvo::Session session;
    session.audioDevice.inputDeviceId = "in";
    session.audioDevice.outputDeviceId = "out";
    session.audioDevice.outputPorts = {{2, "L"}};
    session.audioDevice.inputPorts = {{-1, "Mic"}, {5, ""}};
    EXPECT_THAT(*Write(session).file, HasSubstr("  <audioDevice inputID=\"in\" outputID=\"out\">\n"
                                                "    <inputPort id=\"-1\" name=\"Mic\"/>\n"
                                                "    <inputPort id=\"5\" name=\"\"/>\n"
                                                "    <outputPort id=\"2\" name=\"L\"/>\n"
                                                "  </audioDevice>\n"));
    EXPECT_EQ(ReadPath(Path()).session.audioDevice, session.audioDevice);
}

}  // namespace
}  // namespace tses
