#include "plugin/elements/clips/ClipStretch.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/Keywords.h"
#include "plugin/serializer/SerializerImpl.h"

// How a clip is stretched in time and shifted in pitch:
//
//     <clipStretch adaptiveWindowSize="37" pitchAdjustment="0" preserveFormants="true"
//                  stretchMode="realtime" stretchQuality="high" stretchRatio="1.25"
//                  stretchType="normal" transientSensitivity="40"/>
//
// The three enumerations are read as keywords or as numbers and written as keywords; a number
// beyond a list reaches the host as it is and is written as the list's last keyword.

namespace tses {
namespace {

struct StretchRecord {
    kelcore::uint32 mode = 0;
    kelcore::uint32 type = 0;
    double ratio = 1.0;
    double pitchAdjustment = 0.0;
    kelcore::uint32 quality = 0;
    kelcore::int32 transientSensitivity = 40;
    kelcore::int32 adaptiveWindowSize = 37;
    bool preserveFormants = true;
};

constexpr Keyword<kelcore::uint32> kModes[] = {{u"off", 0}, {u"realtime", 1}, {u"rendered", 2}};
constexpr Keyword<kelcore::uint32> kTypes[] = {{u"normal", 0}, {u"solo", 1}, {u"varispeed", 2}};
constexpr Keyword<kelcore::uint32> kQualities[] = {{u"high", 0}, {u"medium", 1}, {u"low", 2}};

// Reading

template <std::size_t Count>
void ReadKeywordOrNumber(const Keyword<kelcore::uint32> (&table)[Count], std::u16string_view text,
                         kelcore::uint32& target) {
    if (const auto value = FindValue(table, text)) {
        target = *value;
    } else {
        ParseUnsigned(text, target);
    }
}

void ReadMode(std::u16string_view text, StretchRecord& record) {
    ReadKeywordOrNumber(kModes, text, record.mode);
}

void ReadType(std::u16string_view text, StretchRecord& record) {
    ReadKeywordOrNumber(kTypes, text, record.type);
}

void ReadQuality(std::u16string_view text, StretchRecord& record) {
    ReadKeywordOrNumber(kQualities, text, record.quality);
}

constexpr Binding<StretchRecord> kBindings[] = {
    {names::adaptiveWindowSize, read::Number<&StretchRecord::adaptiveWindowSize>},
    {names::pitchAdjustment, read::LenientDouble<&StretchRecord::pitchAdjustment>},
    {names::preserveFormants, read::LenientBool<&StretchRecord::preserveFormants>},
    {names::stretchMode, ReadMode},
    {names::stretchQuality, ReadQuality},
    {names::stretchRatio, read::LenientDouble<&StretchRecord::ratio>},
    {names::stretchType, ReadType},
    {names::transientSensitivity, read::Number<&StretchRecord::transientSensitivity>},
};

void Apply(const StretchRecord& record, IEditClipStretch& stretch) {
    stretch.SetStretchMode(record.mode);
    stretch.SetStretchType(record.type);
    stretch.SetStretchRatio(record.ratio);
    stretch.SetPitchAdjustment(record.pitchAdjustment);
    stretch.SetStretchQuality(record.quality);
    stretch.SetTransientSensitivity(record.transientSensitivity);
    stretch.SetAdaptiveWindowSize(record.adaptiveWindowSize);
    stretch.SetPreserveFormants(record.preserveFormants);
}

}  // namespace

void Serializer::Impl::StartClipStretch(State state, const TagAttributes& attributes) {
    PushState(state);
    StretchRecord record;
    ReadAttributes<kBindings>(attributes, record);
    if (!clips_.audioClip) {
        return;
    }
    if (const auto stretch = Retain(clips_.audioClip->GetClipStretch())) {
        Apply(record, *stretch);
    }
}

// Writing

namespace {

StretchRecord QueryStretch(IQueryClipStretch& stretch) {
    StretchRecord record;
    record.mode = stretch.GetStretchMode();
    record.type = stretch.GetStretchType();
    record.ratio = stretch.GetStretchRatio();
    record.pitchAdjustment = stretch.GetPitchAdjustment();
    record.quality = stretch.GetStretchQuality();
    record.transientSensitivity = stretch.GetTransientSensitivity();
    record.adaptiveWindowSize = stretch.GetAdaptiveWindowSize();
    record.preserveFormants = stretch.GetPreserveFormants();
    return record;
}

template <std::size_t Count>
std::u16string KeywordOrLast(const Keyword<kelcore::uint32> (&table)[Count],
                             kelcore::uint32 value) {
    return std::u16string(FindKeyword(table, value, table[Count - 1].text));
}

AttributeMap ToAttributes(const StretchRecord& record) {
    return {
        {names::stretchMode, KeywordOrLast(kModes, record.mode)},
        {names::stretchType, KeywordOrLast(kTypes, record.type)},
        {names::stretchQuality, KeywordOrLast(kQualities, record.quality)},
        {names::stretchRatio, FormatDouble(record.ratio)},
        {names::pitchAdjustment, FormatDouble(record.pitchAdjustment)},
        {names::transientSensitivity, FormatSigned(record.transientSensitivity)},
        {names::adaptiveWindowSize, FormatSigned(record.adaptiveWindowSize)},
        {names::preserveFormants, FormatBool(record.preserveFormants)},
    };
}

}  // namespace

bool WriteClipStretch(SessionXMLWriter& writer, HostReference<IQueryClipStretch> stretch) {
    return !stretch ||
           (writer.StartElement(names::clipStretch, ToAttributes(QueryStretch(*stretch))) &&
            writer.EndElement());
}

}  // namespace tses
