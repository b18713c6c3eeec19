#include "platform/kelcore/replacement/Properties.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <optional>

#include "tests/platform/kelcore/replacement/ReplacementFixture.h"
#include "tests/platform/support/OtherProcess.h"

namespace kelcore {
namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kDefaultAccessList = "system.posix_acl_default";

std::optional<std::string> AttributeOf(const std::string& path, const char* name) {
    std::string value(1024, '\0');
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    if (size < 0) {
        return std::nullopt;
    }
    value.resize(static_cast<std::size_t>(size));
    return value;
}

/// An access list in the kernel's format: owner rw, user 1234 r, group none, mask r, others none.
std::string SomeAccessList() {
    std::string list("\x02\x00\x00\x00", 4);
    const auto entry = [&list](char tag, char rights, std::string_view id) {
        list += tag;
        list += '\0';
        list += rights;
        list += '\0';
        list += id;
    };
    constexpr std::string_view kNoId = "\xFF\xFF\xFF\xFF";
    entry(0x01, 6, kNoId);
    entry(0x02, 4, std::string_view("\xD2\x04\x00\x00", 4));
    entry(0x04, 0, kNoId);
    entry(0x10, 4, kNoId);
    entry(0x20, 0, kNoId);
    return list;
}

class ReplacementPropertiesTest : public ReplacementTest {};

TEST_F(ReplacementPropertiesTest, KeepsTheMode) {
    for (const mode_t mode : {0600U, 0644U, 0666U, 0755U, 0640U, 02664U, 0202U}) {
        MakeOld(mode);
        Replace(target_, "new");
        EXPECT_EQ(ModeOf(bytes_), mode) << std::oct << mode;
    }
}

TEST_F(ReplacementPropertiesTest, ANewFileHasTheUsualModeOfThisProcess) {
    const mode_t before = umask(027);
    Replace(target_, "new");
    umask(before);
    EXPECT_EQ(ModeOf(bytes_), 0640U);
}

// The tests below need privileges and file system features that not every machine has. They skip
// themselves elsewhere, and the test run reports that. All of them run for root on a file system
// with extended attributes.

TEST_F(ReplacementPropertiesTest, KeepsOwnerAndGroup) {
    MakeOld();
    if (chown(bytes_.c_str(), 1234, 2345) != 0) {
        GTEST_SKIP() << "only a privileged user may give files away";
    }
    ASSERT_EQ(chmod(bytes_.c_str(), 04664), 0);
    Replace(target_, "new");
    struct stat status {};
    ASSERT_EQ(stat(bytes_.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 2345U);
    EXPECT_EQ(ModeOf(bytes_), 04664U);
}

TEST_F(ReplacementPropertiesTest, IfOwnerAndGroupCannotBeKeptNobodyGainsRights) {
    MakeOld();
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs a file of somebody else";
    }
    ASSERT_EQ(chmod(bytes_.c_str(), 04666), 0);
    ASSERT_EQ(test::RunUnprivileged([this]() -> std::string {
                  Replace(target_, "new");
                  return "replaced";
              }),
              "replaced");
    EXPECT_EQ(test::ReadFile(bytes_), "new");
    EXPECT_EQ(ModeOf(bytes_), 0666U) << "no set-user-id for another owner";

    ASSERT_EQ(chown(bytes_.c_str(), 0, 0), 0);
    ASSERT_EQ(chmod(bytes_.c_str(), 0662), 0);
    ASSERT_EQ(test::RunUnprivileged([this]() -> std::string {
                  Replace(target_, "newer");
                  return "replaced";
              }),
              "replaced");
    EXPECT_EQ(ModeOf(bytes_), 0622U) << "the new group gets what everybody has";
}

TEST_F(ReplacementPropertiesTest, IfOnlyTheGroupCannotBeKeptItGetsTheRightsOfEverybody) {
    MakeOld();
    if (chown(bytes_.c_str(), 65534, 2345) != 0) {
        GTEST_SKIP() << "only a privileged user may give files away";
    }
    ASSERT_EQ(chmod(bytes_.c_str(), 0664), 0);
    ASSERT_EQ(test::RunUnprivileged([this]() -> std::string {
                  Replace(target_, "new");
                  return "replaced";
              }),
              "replaced");
    EXPECT_EQ(ModeOf(bytes_), 0644U);
}

TEST_F(ReplacementPropertiesTest, KeepsExtendedAttributes) {
    MakeOld();
    const std::string large(2000, 'x');
    if (!SetAttribute(bytes_, "user.orvo.test", "value")) {
        GTEST_SKIP() << "no extended attributes here";
    }
    ASSERT_TRUE(SetAttribute(bytes_, "user.orvo.empty", ""));
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, "user.orvo.test"), "value");
    EXPECT_EQ(AttributeOf(bytes_, "user.orvo.empty"), "");
}

TEST_F(ReplacementPropertiesTest, KeepsTheAccessList) {
    MakeOld();
    if (!SetAttribute(bytes_, kAccessList, SomeAccessList())) {
        GTEST_SKIP() << "no access lists here";
    }
    const auto before = AttributeOf(bytes_, kAccessList);
    const mode_t mode = ModeOf(bytes_);
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, kAccessList), before);
    EXPECT_EQ(ModeOf(bytes_), mode);
}

TEST_F(ReplacementPropertiesTest, TheFoldersDefaultAccessListDoesNotChangeAnOldFilesRights) {
    MakeOld(0600);
    if (!SetAttribute(folder_.Path(), kDefaultAccessList, SomeAccessList())) {
        GTEST_SKIP() << "no access lists here";
    }
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, kAccessList), std::nullopt);
    EXPECT_EQ(ModeOf(bytes_), 0600U);
}

TEST_F(ReplacementPropertiesTest, ANewFileGetsTheFoldersDefaultAccessList) {
    if (!SetAttribute(folder_.Path(), kDefaultAccessList, SomeAccessList())) {
        GTEST_SKIP() << "no access lists here";
    }
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, kAccessList), SomeAccessList());
}

TEST_F(ReplacementPropertiesTest, CapabilitiesOfTheOldContentAreNotKept) {
    MakeOld();
    // A version 2 capability set. It would grant rights to any new content of the file.
    const std::string capability(
        "\x00\x00\x00\x02\x00\x04\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00", 20);
    if (!SetAttribute(bytes_, "security.capability", capability)) {
        GTEST_SKIP() << "file capabilities cannot be set here";
    }
    Replace(target_, "new");
    EXPECT_EQ(AttributeOf(bytes_, "security.capability"), std::nullopt);
}

TEST_F(ReplacementPropertiesTest, MeasurementsOfTheOldContentAreNotKept) {
    for (const char* const name : {"security.ima", "security.evm"}) {
        MakeOld();
        if (!SetAttribute(bytes_, name, "measured")) {
            GTEST_SKIP() << "measurements cannot be set here";
        }
        Replace(target_, "new");
        EXPECT_EQ(AttributeOf(bytes_, name), std::nullopt) << name;
    }
}

}  // namespace
}  // namespace kelcore
