#include "toolkit/SessionContent.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "platform/kelcore/Numbers.h"
#include "platform/tbcore/MediaHandlers.h"

namespace toolkit {
namespace {

using enum ValueKind;

constexpr CarriedAttribute kRootAttributes[] = {{u"version", Text}};
constexpr CarriedAttribute kSessionAttributes[] = {
    {u"sampleRate", Number},   {u"audioChannelType", ChannelType},
    {u"duration", LongNumber}, {u"bitDepth", Number},
    {u"appVersion", Text},     {u"appBuild", Text},
};
constexpr CarriedAttribute kFileAttributes[] = {
    {u"id", Number},
    {u"absolutePath", Text},
    {u"relativePath", Text},
    {u"mediaHandler", HandlerName},
    {u"mediaHandlerID", Text},
    {u"recoveryID", Text},
    {u"importerPrivateSettings", Text},
};
constexpr CarriedAttribute kDeviceAttributes[] = {{u"inputID", Text}, {u"outputID", Text}};
constexpr CarriedAttribute kPortAttributes[] = {{u"id", Number}, {u"name", Text}};

constexpr CarriedElement kElements[] = {
    {kRootElement, u"", Occurrence::Once, kRootAttributes},
    {u"session", u"orvo", Occurrence::Once, kSessionAttributes},
    {u"files", u"orvo", Occurrence::Many, {}},
    {u"file", u"files", Occurrence::ById, kFileAttributes},
    {u"audioDevice", u"orvo", Occurrence::Once, kDeviceAttributes},
    {u"inputPort", u"audioDevice", Occurrence::Many, kPortAttributes},
    {u"outputPort", u"audioDevice", Occurrence::Many, kPortAttributes},
};

constexpr std::u16string_view kChannelTypes[] = {u"mono", u"stereo", u"fivePointOne"};

template <class Number>
bool IsNumber(std::u16string_view text) {
    Number ignored{};
    return kelcore::StringToNumber(text, ignored);
}

bool IsHandlerName(std::u16string_view text) {
    std::u16string ignored;
    return tbcore::TranslateFromHumanReadableMediaHandler(text, ignored);
}

}  // namespace

const CarriedElement* FindCarriedElement(std::u16string_view name, std::u16string_view parent) {
    const auto row = std::find_if(std::begin(kElements), std::end(kElements),
                                  [&](const CarriedElement& element) {
                                      return element.name == name && element.parent == parent;
                                  });
    return row != std::end(kElements) ? row : nullptr;
}

const CarriedAttribute* FindCarriedAttribute(const CarriedElement& element,
                                             std::u16string_view name) {
    const auto row =
        std::find_if(element.attributes.begin(), element.attributes.end(),
                     [&](const CarriedAttribute& attribute) { return attribute.name == name; });
    return row != element.attributes.end() ? &*row : nullptr;
}

bool IsCarriedValue(ValueKind kind, std::u16string_view text) {
    switch (kind) {
        case Text:
            return true;
        case Number:
            return IsNumber<kelcore::int32>(text);
        case LongNumber:
            return IsNumber<kelcore::int64>(text);
        case ChannelType:
            return std::find(std::begin(kChannelTypes), std::end(kChannelTypes), text) !=
                   std::end(kChannelTypes);
        case HandlerName:
            return IsHandlerName(text);
    }
    return false;
}

}  // namespace toolkit
