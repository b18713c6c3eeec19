#include "toolkit/media/Manifest.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using toolkit::Manifest;
using toolkit::ManifestLine;
using toolkit::ParseManifest;

const std::string kDigest(64, 'a');

TEST(Manifest, ReadsItsOwnLines) {
    EXPECT_EQ(ParseManifest(ManifestLine("media/a b.wav", kDigest) + ManifestLine("s", kDigest)),
              (Manifest{{"media/a b.wav", kDigest}, {"s", kDigest}}));
    EXPECT_EQ(ParseManifest(""), Manifest());
}

TEST(Manifest, PassesOverHalfALine) {
    EXPECT_EQ(ParseManifest(ManifestLine("s", kDigest) + kDigest + "  medi"),
              (Manifest{{"s", kDigest}}));
}

TEST(Manifest, RefusesOtherLinesAndFilesOutsideTheFolder) {
    EXPECT_EQ(ParseManifest("\n"), std::nullopt);
    EXPECT_EQ(ParseManifest(kDigest + "\n"), std::nullopt);
    EXPECT_EQ(ParseManifest(kDigest + "  \n"), std::nullopt);
    EXPECT_EQ(ParseManifest(kDigest + " *s\n"), std::nullopt);
    EXPECT_EQ(ParseManifest(std::string(64, 'A') + "  s\n"), std::nullopt);
    EXPECT_EQ(ParseManifest(ManifestLine("../s", kDigest)), std::nullopt);
    EXPECT_EQ(ParseManifest(ManifestLine("/s", kDigest)), std::nullopt);
}

}  // namespace
