#include "toolkit/collect/PortableNames.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using toolkit::PortableName;
using toolkit::UniqueNames;

TEST(PortableNames, LeavesWhatEverySystemAccepts) {
    EXPECT_EQ(PortableName("Caf\xC3\xA9 1 (live).wav"), "Caf\xC3\xA9 1 (live).wav");
    EXPECT_EQ(PortableName("console.wav"), "console.wav");
}

TEST(PortableNames, ReplacesWhatSomeSystemRefuses) {
    EXPECT_EQ(PortableName("a:b?\\c\x01.wav"), "a_b__c_.wav");
    EXPECT_EQ(PortableName("a\xFF\xC2\x85.wav"), "a__.wav");
    EXPECT_EQ(PortableName("take."), "take._");
    EXPECT_EQ(PortableName("take "), "take _");
    EXPECT_EQ(PortableName("con.wav"), "_con.wav");
    EXPECT_EQ(PortableName("COM1"), "_COM1");
    EXPECT_EQ(PortableName(".orvo-part"), "_.orvo-part");
    EXPECT_EQ(PortableName(""), "_");
}

TEST(PortableNames, NumbersNamesThatSomeSystemTakesForTheSame) {
    UniqueNames names;
    EXPECT_EQ(names.Take("kick.wav"), "kick.wav");
    EXPECT_EQ(names.Take("Kick.WAV"), "Kick-2.WAV");
    EXPECT_EQ(names.Take("kick.wav"), "kick-3.wav");
    EXPECT_EQ(names.Take("caf\xC3\xA9"), "caf\xC3\xA9");
    EXPECT_EQ(names.Take("cafe\xCC\x81"), "cafe\xCC\x81-2");
}

TEST(PortableNames, ShortensWholeCharactersOfALongName) {
    UniqueNames names;
    std::string name;
    for (int i = 0; i < 125; ++i) {
        name += "\xC3\xA9";
    }
    const std::string first = names.Take(name + ".wav");
    EXPECT_EQ(first, name.substr(0, 236) + ".wav");
    EXPECT_EQ(names.Take(name + ".wav"), name.substr(0, 236) + "-2.wav");
}

}  // namespace
