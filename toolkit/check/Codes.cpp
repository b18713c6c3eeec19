#include "toolkit/check/Codes.h"

#include <algorithm>
#include <cstddef>

namespace toolkit {
namespace {

using orvo::CheckCode;
using enum orvo::Severity;

struct Entry {
    Code code;
    CheckCode text;
};

constexpr Entry kEntries[] = {
    {Code::Unreadable,
     {"unreadable", Error, "The file cannot be read.",
      "There is no such file, it is a folder or a device, or the system refuses to read it.",
      "orvo check song.orv", "Mend the name, or the rights to the file and its folders."}},
    {Code::NotWellFormed,
     {"not-well-formed", Error, "The file is not well-formed XML, or not JSON.",
      "No reader opens the session. The message says what the parser stumbled over; the cause may "
      "stand before it, such as an element that is not closed.",
      "<clipGroup id=\"1\" hue=\"20\"",
      "Mend the text at the place, or restore an older copy of the file."}},
    {Code::NotASession,
     {"not-a-session", Error, "The file is no session.",
      "The file is of another kind, or is built as no session is: with another root element, a "
      "document type, elements nested too deep, or something longer than readers accept.",
      "<project/>", "Name a session file."}},
    {Code::WrongJson,
     {"wrong-json", Error, "The JSON is not that of a session.",
      "A key is unknown or stands twice, or a value has another type or range. Only the first is "
      "reported.",
      "{\"sampleRate\": \"fast\"}", "Mend the value at the path."}},
    {Code::MissingId,
     {"missing-id", Error, "Something lacks what tells it apart from others.",
      "A file or track without an id, a send without a slot index: a read drops it. Without the id "
      "of a track the whole session cannot be read.",
      "<file absolutePath=\"/media/drums.wav\"/>",
      "Add the attribute, with a value that no other has."}},
    {Code::DuplicateId,
     {"duplicate-id", Error, "Two things share an id.",
      "A read makes one of two files, tracks or parameters with the same id, and lets the second "
      "replace the first. Of two clips or groups it is not clear which one others mean.",
      "<file id=\"3\" .../> <file id=\"3\" .../>",
      "Give one of them another id, and change what refers to it."}},
    {Code::UnknownElement,
     {"unknown-element", Warning, "An element that sessions do not have.",
      "A read skips it with all that it contains, and a save drops it. A newer version of the "
      "application, or another program, may have written it.",
      "<session> <markers/> </session>",
      "Remove it, or keep the file as it is and do not save it with this version."}},
    {Code::MisplacedElement,
     {"misplaced-element", Warning, "An element where it has no meaning.",
      "Sessions have such an element, but not in this parent. A read skips it with all that it "
      "contains, and a save drops it.",
      "<session> <audioClip id=\"4\"/> </session>", "Move it to where it belongs."}},
    {Code::RepeatedElement,
     {"repeated-element", Warning, "An element that counts once stands twice.",
      "A read lets the second change what the first said, and a save writes one.",
      "<fadeIn endPoint=\"480\"/> <fadeIn endPoint=\"960\"/>",
      "Remove the one that is not meant."}},
    {Code::IgnoredElement,
     {"ignored-element", Warning, "An element of old versions that has no effect any more.",
      "Old sessions contain it. A read accepts and ignores it, and a save drops it.",
      "<trackPanner panLeftRight=\"-0.5\"/>", "Nothing needs to be done."}},
    {Code::StrayText,
     {"stray-text", Warning, "Text where only elements stand.",
      "A read ignores the text, and a save drops it.", "<tracks>Drums</tracks>", "Remove it."}},
    {Code::UnknownAttribute,
     {"unknown-attribute", Warning, "An attribute that sessions do not have.",
      "A read ignores it, and a save drops it. A newer version of the application, or another "
      "program, may have written it.",
      "<audioClip id=\"4\" mood=\"calm\"/>",
      "Remove it, or keep the file as it is and do not save it with this version."}},
    {Code::MisplacedAttribute,
     {"misplaced-attribute", Warning, "An attribute where it has no meaning.",
      "Other elements have such an attribute. A read ignores it here, and a save drops it.",
      "<fadeIn zOrder=\"1\"/>", "Move it to where it belongs."}},
    {Code::RepeatedAttribute,
     {"repeated-attribute", Warning, "An attribute that another one hides.",
      "Readers look at names without their prefix, so only one of two such attributes counts: the "
      "one without a prefix.",
      "<take name=\"A\" x:name=\"B\"/>", "Remove the one that is not meant."}},
    {Code::IgnoredAttribute,
     {"ignored-attribute", Warning, "An attribute of old versions that has no effect any more.",
      "Old sessions contain it. A read accepts and ignores it, and a save drops it.",
      "<trackAudioParameters volume=\"0.8\"/>", "Nothing needs to be done."}},
    {Code::WrongValue,
     {"wrong-value", Warning, "A value that is not of its kind.",
      "A read takes another value in its place, which the message names, and a save writes that "
      "one.",
      "<audioClip startPoint=\"1.5 s\"/>", "Write a value of the kind that docs/format.md names."}},
    {Code::BadBase64,
     {"bad-base64", Error, "Bytes that are not Base64.",
      "The state of an effect, or events. A read drops all of it.",
      "<presetChunkData>AQI8*</presetChunkData>",
      "Restore the text from an older copy. Without it the effect starts from its defaults."}},
    {Code::NotSaved,
     {"not-saved", Warning, "Something that a save changes.",
      "Each value by itself is fine, but together they say what a save cannot write.",
      "<timeFormatState timeFormat=\"7\"/>",
      "Nothing needs to be done until the session is saved."}},
    {Code::SampleRate,
     {"sample-rate", Error, "The sample rate is 0.",
      "Positions and lengths are counted in samples, so nothing has a place in time.",
      "<session sampleRate=\"0\"/>", "State the rate at which the session was made."}},
    {Code::NegativeLength,
     {"negative-length", Error, "A length is below 0.",
      "A clip, the selection or the session cannot end before it begins.",
      "<audioClip duration=\"-48000\"/>", "Mend the length."}},
    {Code::UnknownFile,
     {"unknown-file", Error, "A clip plays a file that the session does not have.",
      "The clip names no file, or the id of no file of the session. It is silent, or empty.",
      "<audioClip id=\"4\" fileID=\"99\"/>",
      "Give the clip the id of a file, or add the file under \"files\"."}},
    {Code::MissingMedia,
     {"missing-media", Error, "A media file is not where the session expects it.",
      "Neither of its paths leads to a file. The clips that play it are silent, or empty.",
      "<file id=\"1\" absolutePath=\"/Volumes/Old/drums.wav\" relativePath=\"drums.wav\"/>",
      "Bring the file there, or let `orvo relink` find it."}},
    {Code::UnreadableMedia,
     {"unreadable-media", Warning, "A media file that clips play cannot be looked into.",
      "It may be damaged, of a kind that this tool does not know, or not to be read by this user.",
      "<file id=\"1\" absolutePath=\"/media/empty.wav\"/>",
      "Look at the rights to the file, and try to play it."}},
    {Code::ShortMedia,
     {"short-media", Error, "A media file is shorter than its clip.",
      "The clip goes on after its file ends. The file may have been replaced, or cut off while it "
      "was copied. Clips that are looped or stretched are not looked at.",
      "<audioClip sourceInPoint=\"0\" duration=\"960000\"/>",
      "Bring back the whole file, or shorten the clip."}},
    {Code::MediaRate,
     {"media-rate", Warning, "A media file has another sample rate than its session.",
      "Editors convert it on the fly or play it at the wrong speed.",
      "<session sampleRate=\"48000\"/>, and a file of 44100 samples per second",
      "Convert the file, or import it anew."}},
    {Code::MediaChannels,
     {"media-channels", Error, "A clip uses a channel that its media file does not have.",
      "The clip's channel map names it. The file may have been replaced by one with fewer "
      "channels.",
      "<channelMap> <channel index=\"1\" sourceIndex=\"5\"/> </channelMap>",
      "Bring back the right file, or mend the map."}},
    {Code::CrossfadeAbsent,
     {"crossfade-absent", Warning, "A clip crossfades with a clip that does not exist.",
      "No clip of the session has the id that it names.", "<audioClip crossFadeTailClipID=\"99\"/>",
      "Set the id to -1, or to that of the clip that follows."}},
    {Code::CrossfadeApart,
     {"crossfade-apart", Warning, "Two clips crossfade that do not overlap.",
      "A crossfade needs two clips of one track that sound at the same time.",
      "<audioClip id=\"1\" startPoint=\"0\" duration=\"10\" crossFadeTailClipID=\"2\"/> "
      "<audioClip id=\"2\" startPoint=\"500\"/>",
      "Set the id to -1, or move the clips together."}},
    {Code::GroupMemberAbsent,
     {"group-member-absent", Warning, "A group has a member that does not exist.",
      "The track does not exist, or has no clip with that id.",
      "<clipGroup> <item trackID=\"1\" clipID=\"99\"/> </clipGroup>", "Remove the member."}},
    {Code::OutputAbsent,
     {"output-absent", Error, "A track feeds a track that does not exist.",
      "The track is not heard.", "<trackOutput type=\"trackID\" outputID=\"99\"/>",
      "Route the track to a bus, the master or the hardware."}},
    {Code::SendAbsent,
     {"send-absent", Error, "A send leads to a track that does not exist.",
      "What it sends is not heard.", "<sendSlot slotIndex=\"0\" sendOutputID=\"99\"/>",
      "Route the send to a track, or to -1."}},
    {Code::SideChainAbsent,
     {"side-chain-absent", Error, "A side chain leads to a track that does not exist.",
      "The effect that should follow it does not.",
      "<sendSlot slotIndex=\"0\" sendOutputID=\"99\" destCompIndex=\"1\"/>",
      "Route the side chain to the track with the effect."}},
    {Code::RoutingLoop,
     {"routing-loop", Error, "Tracks feed each other in a circle.",
      "No order exists in which they could be mixed. Editors refuse such a routing, or one of the "
      "tracks falls silent.",
      "track 2 feeds track 3 by its output, and track 3 feeds track 2 by a send",
      "Route one of them elsewhere."}},
    {Code::KeyframeOrder,
     {"keyframe-order", Warning, "A keyframe stands behind a later one.",
      "Keyframes belong in the order of time. What an editor makes of others is its own matter.",
      "<parameterKeyframe sampleOffset=\"960\"/> <parameterKeyframe sampleOffset=\"480\"/>",
      "Sort the keyframes."}},
    {Code::ClipPastEnd,
     {"clip-past-end", Warning, "A clip goes on after the session's end.",
      "A mix of the session's length cuts it off.",
      "<session duration=\"480\"/>, and a clip that ends at 960",
      "Lengthen the session, or shorten the clip."}},
};

constexpr bool AreInOrder() {
    for (std::size_t i = 0; i < std::size(kEntries); ++i) {
        if (kEntries[i].code != static_cast<Code>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(AreInOrder());

constexpr auto kCodes = [] {
    std::array<CheckCode, std::size(kEntries)> codes{};
    std::ranges::transform(kEntries, codes.begin(), &Entry::text);
    return codes;
}();

}  // namespace

const CheckCode& Describe(Code code) {
    return kCodes[static_cast<std::size_t>(code)];
}

}  // namespace toolkit

namespace orvo {

std::span<const CheckCode> CheckCodes() {
    return toolkit::kCodes;
}

const CheckCode* FindCheckCode(std::string_view code) {
    const auto* const found = std::ranges::find(toolkit::kCodes, code, &CheckCode::code);
    return found != toolkit::kCodes.end() ? &*found : nullptr;
}

}  // namespace orvo
