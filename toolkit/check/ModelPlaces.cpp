#include "toolkit/check/ModelPlaces.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "format/Elements.h"
#include "format/Ids.h"
#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Strings.h"
#include "session/MemberKey.h"

namespace toolkit {
namespace {

using orvo::KeyOf;
using tses::Element;
using tses::Occurrence;
using tses::State;
namespace names = tses::names;
namespace states = tses::states;

/// Elements that say something of the same object as the element around them.
constexpr State kOfTheSameObject[] = {states::orvo,
                                      states::session,
                                      states::files,
                                      states::tracks,
                                      states::trackParameters,
                                      states::trackAudioParameters,
                                      states::trackOutput,
                                      states::trackInput,
                                      states::sessionState,
                                      states::clipGroups,
                                      states::slotChannelMap,
                                      states::sessionProperties,
                                      states::trackVisibilityPresets};

struct List {
    State state;
    std::string_view key;
};

/// Elements that are the items of lists. A port is an input or an output by its name.
constexpr List kLists[] = {
    {states::file, KeyOf(&orvo::Session::files)},
    {states::masterTrack, KeyOf(&orvo::Session::audioTracks)},
    {states::busTrack, KeyOf(&orvo::Session::audioTracks)},
    {states::audioTrack, KeyOf(&orvo::Session::audioTracks)},
    {states::instrumentTrack, KeyOf(&orvo::Session::audioTracks)},
    {states::videoTrack, KeyOf(&orvo::Session::videoTracks)},
    {states::trackVisibilityPreset, KeyOf(&orvo::Session::trackVisibilityPresets)},
    {states::trackVisibility, KeyOf(&orvo::TrackVisibilityPreset::tracks)},
    {states::clipGroup, KeyOf(&orvo::Session::clipGroups)},
    {states::clipGroupItem, KeyOf(&orvo::ClipGroup::items)},
    {states::property, KeyOf(&orvo::Session::properties)},
    {states::audioClip, KeyOf(&orvo::AudioTrack::clips)},
    {states::midiClip, KeyOf(&orvo::AudioTrack::midiClips)},
    {states::videoClip, KeyOf(&orvo::VideoTrack::clips)},
    {states::take, KeyOf(&orvo::AudioClip::takes)},
    {states::sendSlot, KeyOf(&orvo::SendList::slots)},
    {states::slot, KeyOf(&orvo::EffectsRack::slots)},
    {states::editParameter, KeyOf(&orvo::AudioTrack::editParameters)},
    {states::parameterKeyframe, KeyOf(&orvo::AutomationLane::keyframes)},
};

/// The list that an element is an item of; empty if there is none.
std::string_view ListOf(const Element& kind) {
    if (kind.state == states::audioPort) {
        return kind.name == names::inputPort ? KeyOf(&orvo::AudioDevice::inputPorts)
                                             : KeyOf(&orvo::AudioDevice::outputPorts);
    }
    const auto* const found = std::ranges::find(kLists, kind.state, &List::state);
    return found != std::end(kLists) ? found->key : std::string_view();
}

/// Members whose attributes may have another name.
struct Renamed {
    std::string_view key;
    std::u16string_view attribute;
};
constexpr Renamed kRenamed[] = {
    {KeyOf(&orvo::AudioTrack::outputTrackId), names::outputID},
    {KeyOf(&orvo::AudioTrack::hardwareOutputId), names::outputID},
    {KeyOf(&orvo::AudioClip::duration), names::sourceOutPoint},
    {KeyOf(&orvo::File::path), names::absolutePath},
    {KeyOf(&orvo::File::path), names::relativePath},
};

/// The names that the attribute of a member may have.
std::vector<std::u16string> AttributesOf(std::string_view key) {
    std::vector<std::u16string> attributes = {kelcore::UTF8to16(key)};
    for (const Renamed& renamed : kRenamed) {
        if (renamed.key == key) {
            attributes.emplace_back(renamed.attribute);
        }
    }
    return attributes;
}

bool IsNumber(tses::ValueKind kind) {
    return kind == tses::ValueKind::Unsigned || kind == tses::ValueKind::Signed;
}

}  // namespace

ModelPlaces::ModelPlaces(const EditedDocument& document) : document_(document) {
    for (std::size_t element = 0; element < document.Elements().size(); ++element) {
        const std::size_t object = ObjectOf(element);
        objectOf_.push_back(object);
        if (object != kNowhere) {
            objects_[object].elements.push_back(element);
        }
    }
}

std::size_t ModelPlaces::ObjectOf(std::size_t element) {
    if (element == 0) {
        return 0;
    }
    const ElementExtent& extent = document_.Elements()[element];
    const std::size_t parent = objectOf_[extent.parent];
    if (extent.kind == nullptr || extent.kind->isDropped || parent == kNowhere) {
        return kNowhere;
    }
    const Element& kind = *extent.kind;
    if (std::ranges::find(kOfTheSameObject, kind.state) != std::end(kOfTheSameObject)) {
        return parent;
    }
    if (const std::string_view list = ListOf(kind); !list.empty()) {
        return InList(parent, element, list);
    }
    const std::string name = kelcore::UTF16to8(kind.name);
    switch (kind.state) {
        case states::parameter:
            return Member(Member(parent, std::string(KeyOf(&orvo::Component::parameters))),
                          KeyIn(element).value_or(""));
        case states::clipChannel:
            return Member(parent, KeyIn(element).value_or(""));
        case states::component: {
            const auto key = KeyIn(element);
            return key ? Member(parent, *key) : kNowhere;
        }
        default:
            return Member(parent, name);
    }
}

/// The object of an item of a list: that of an earlier item if both have the same key.
std::size_t ModelPlaces::InList(std::size_t parent, std::size_t element, std::string_view list) {
    const Occurrence& occurrence = document_.Elements()[element].kind->occurrence;
    const auto key = KeyIn(element);
    if (!key && (occurrence.withoutKey == Occurrence::WithoutKey::IsLost ||
                 occurrence.withoutKey == Occurrence::WithoutKey::EndsTheRead)) {
        return kNowhere;
    }
    const std::size_t object = Member(parent, std::string(list));
    if (occurrence.unique == Occurrence::Unique::Nowhere) {
        return Member(object, std::to_string(objects_[object].count++));
    }
    const auto [known, isNew] = byKey_.try_emplace({object, key.value_or("")}, 0);
    if (isNew) {
        known->second = Member(object, std::to_string(objects_[object].count++));
    }
    return known->second;
}

/// What tells the element apart from others; no value if it has no such thing.
std::optional<std::string> ModelPlaces::KeyIn(std::size_t element) const {
    const Element& kind = *document_.Elements()[element].kind;
    const Occurrence& occurrence = kind.occurrence;
    if (occurrence.key.empty()) {
        return std::nullopt;
    }
    const auto text = document_.Attribute(element, occurrence.key);
    if (!IsNumber(kind.FindAttribute(occurrence.key)->kind)) {
        return text ? std::optional(kelcore::UTF16to8(*text)) : std::nullopt;
    }
    kelcore::uint32 number = occurrence.mayNameNone ? tses::kNoId : 0;
    kelcore::StringToNumber(text.value_or(u""), number);
    const bool isMissing = !text || (occurrence.mayNameNone && number == tses::kNoId);
    return isMissing && occurrence.withoutKey != Occurrence::WithoutKey::IsCarried
               ? std::nullopt
               : std::optional(std::to_string(number));
}

std::size_t ModelPlaces::Member(std::size_t parent, const std::string& name) {
    const auto [known, isNew] = objects_[parent].members.try_emplace(name, objects_.size());
    const std::size_t object = known->second;
    if (isNew) {
        objects_.emplace_back();
    }
    return object;
}

ModelPlaces::Spot ModelPlaces::Find(std::string_view path) const {
    std::size_t object = 0;
    std::size_t nearest = 0;  // the innermost object with an element
    while (!path.empty()) {
        path.remove_prefix(1);  // "/"
        const std::string_view name = path.substr(0, path.find('/'));
        const auto member = objects_[object].members.find(name);
        if (member == objects_[object].members.end()) {
            return InObject(objects_[nearest], object == nearest ? name : "");
        }
        path.remove_prefix(name.size());
        object = member->second;
        nearest = objects_[object].elements.empty() ? nearest : object;
    }
    return InObject(objects_[nearest], "");
}

ModelPlaces::Spot ModelPlaces::InObject(const Object& object, std::string_view member) const {
    for (const std::u16string& attribute : AttributesOf(member)) {
        for (const std::size_t element : object.elements) {
            if (document_.Attribute(element, attribute)) {
                return {element, attribute};
            }
        }
    }
    return {object.elements.front(), {}};
}

}  // namespace toolkit
