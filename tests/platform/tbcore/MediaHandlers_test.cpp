#include "platform/tbcore/MediaHandlers.h"

#include <gtest/gtest.h>

namespace tbcore {
namespace {

TEST(MediaHandlers, AnIdentifierHasAReadableName) {
    std::u16string_view name;
    EXPECT_TRUE(TranslateToHumanReadableMediaHandler(u"kel.importer.wave", name));
    EXPECT_EQ(name, u"Waveform Audio (WAV)");
}

TEST(MediaHandlers, AReadableNameHasAnIdentifier) {
    std::u16string_view identifier;
    EXPECT_TRUE(TranslateFromHumanReadableMediaHandler(u"Waveform Audio (WAV)", identifier));
    EXPECT_EQ(identifier, u"kel.importer.wave");
}

TEST(MediaHandlers, EveryHandlerTranslatesBackToItself) {
    for (const auto* known :
         {u"kel.importer.wave", u"kel.importer.rf64", u"kel.importer.aiff", u"kel.importer.flac",
          u"kel.importer.vorbis", u"kel.importer.opus", u"kel.importer.mp3", u"kel.importer.aac",
          u"kel.importer.caf", u"kel.importer.quicktime", u"kel.importer.mpeg4",
          u"kel.importer.matroska", u"kel.importer.midi"}) {
        std::u16string_view name;
        std::u16string_view identifier;
        ASSERT_TRUE(TranslateToHumanReadableMediaHandler(known, name));
        ASSERT_TRUE(TranslateFromHumanReadableMediaHandler(name, identifier));
        EXPECT_EQ(identifier, known);
    }
}

TEST(MediaHandlers, WhatIsUnknownLeavesTheTargetUntouched) {
    std::u16string_view target = u"before";
    EXPECT_FALSE(TranslateToHumanReadableMediaHandler(u"kel.importer.unknown", target));
    EXPECT_FALSE(TranslateToHumanReadableMediaHandler(u"", target));
    EXPECT_FALSE(TranslateToHumanReadableMediaHandler(u"Waveform Audio (WAV)", target));
    EXPECT_FALSE(TranslateFromHumanReadableMediaHandler(u"waveform audio (wav)", target));
    EXPECT_FALSE(TranslateFromHumanReadableMediaHandler(u"", target));
    EXPECT_FALSE(TranslateFromHumanReadableMediaHandler(u"kel.importer.wave", target));
    EXPECT_EQ(target, u"before");
}

}  // namespace
}  // namespace tbcore
