#include "plugin/xml/SerialiserSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tses {
namespace {

using testing::ElementsAre;

const std::u16string kMark = xercesc::XMLUni::fgDOMWRTBOM;

/// Notes every call, and accepts every parameter except one.
class Configuration final : public xercesc::DOMConfiguration {
public:
    explicit Configuration(std::u16string refused = {}) : refused_(std::move(refused)) {}

    bool canSetParameter(const XMLCh* name, bool value) const override {
        calls.push_back(Call(u"can set ", name, value));
        return name != refused_;
    }
    void setParameter(const XMLCh* name, bool value) override {
        calls.push_back(Call(u"set ", name, value));
    }

    void setParameter(const XMLCh*, const void*) override {}
    const void* getParameter(const XMLCh*) const override { return nullptr; }
    bool canSetParameter(const XMLCh*, const void*) const override { return false; }
    const xercesc::DOMStringList* getParameterNames() const override { return nullptr; }

    mutable std::vector<std::u16string> calls;

private:
    static std::u16string Call(const std::u16string& what, const XMLCh* name, bool value) {
        return what + name + (value ? u"" : u" to false");
    }

    std::u16string refused_;
};

TEST(SerialiserSettings, EachIsSetAfterTheSerialiserSaysThatItCanBe) {
    Configuration configuration;
    ConfigureSerialiser(configuration);
    EXPECT_THAT(
        configuration.calls,
        ElementsAre(u"can set format-pretty-print", u"set format-pretty-print", u"can set " + kMark,
                    u"set " + kMark, u"can set xml-declaration", u"set xml-declaration"));
}

TEST(SerialiserSettings, OneThatCannotBeSetIsLeftAlone) {
    Configuration configuration(kMark);
    ConfigureSerialiser(configuration);
    EXPECT_THAT(
        configuration.calls,
        ElementsAre(u"can set format-pretty-print", u"set format-pretty-print", u"can set " + kMark,
                    u"can set xml-declaration", u"set xml-declaration"));
}

}  // namespace
}  // namespace tses
