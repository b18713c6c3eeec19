#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/kelcore/Strings.h"
#include "reference_host/SessionNode.h"
#include "tests/support/SerializerTestAccess.h"

namespace tses {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Diagnostics : public testing::Test {
protected:
    void Attach() { SerializerTestAccess::Attach(impl, &session->Edit()); }

    void AttachLogTarget() {
        session->SetLogTarget(refhost::Ref<refhost::LogTarget>::Adopt(new refhost::LogTarget(
            [this](const std::u16string& text) { log.push_back(kelcore::UTF16to8(text)); })));
    }

    refhost::Ref<refhost::SessionNode> session = refhost::SessionNode::Make();
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    SAXErrorHandler& errors = SerializerTestAccess::Errors(impl);
    std::vector<std::string> log;
};

TEST_F(Diagnostics, TheTextGivesPrefixPlaceIdentifiersAndMessage) {
    Attach();
    AttachLogTarget();
    errors.Warning(12, 7, u"pub", u"/a.orvo", u"odd");
    EXPECT_THAT(log, ElementsAre("XML WARNING: (line: 12, col: 7) [pub /a.orvo] odd\n"));
}

TEST_F(Diagnostics, TheBracketsAreThereForEitherIdentifier) {
    Attach();
    AttachLogTarget();
    errors.Warning(1, 2, u"pub", u"", u"a");
    errors.Warning(1, 2, u"", u"sys", u"b");
    errors.Warning(1, 2, u"", u"", u"c");
    EXPECT_THAT(log, ElementsAre("XML WARNING: (line: 1, col: 2) [pub ] a\n",
                                 "XML WARNING: (line: 1, col: 2) [ sys] b\n",
                                 "XML WARNING: (line: 1, col: 2) c\n"));
}

TEST_F(Diagnostics, AnErrorAndAFatalErrorEndTheParseOnceTheyAreLogged) {
    Attach();
    AttachLogTarget();
    EXPECT_THROW(errors.Error(18446744073709551615U, 0, u"", u"", u"bad"), std::runtime_error);
    EXPECT_THROW(errors.FatalError(3, 4, u"", u"", u"worse"), std::runtime_error);
    EXPECT_THAT(log, ElementsAre("XML ERROR: (line: 18446744073709551615, col: 0) bad\n",
                                 "XML FATAL ERROR: (line: 3, col: 4) worse\n"));
}

TEST_F(Diagnostics, WhatEndsTheParseSaysSo) {
    Attach();
    AttachLogTarget();
    try {
        errors.Error(1, 1, u"", u"", u"bad");
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "parsing error.");
    }
}

TEST_F(Diagnostics, WithoutALogTargetAnErrorIsDroppedAndParsingGoesOn) {
    Attach();
    EXPECT_NO_THROW(errors.Error(1, 1, u"", u"", u"bad"));
    EXPECT_NO_THROW(errors.FatalError(1, 1, u"", u"", u"bad"));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(Diagnostics, WithoutASessionAnErrorIsDroppedAndParsingGoesOn) {
    AttachLogTarget();
    EXPECT_NO_THROW(errors.Error(1, 1, u"", u"", u"bad"));
    EXPECT_NO_THROW(errors.FatalError(1, 1, u"", u"", u"bad"));
    EXPECT_THAT(log, IsEmpty());
}

}  // namespace
}  // namespace tses
