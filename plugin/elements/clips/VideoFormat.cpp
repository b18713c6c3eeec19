#include "plugin/elements/clips/VideoFormat.h"

#include "platform/kelmediatypes/PixelAspectRatio.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/SerializerImpl.h"

// The video stream of a clip:
//
//     <videoFormat fieldType="0" height="1080" parDenominator="1" parNumerator="1" pixelType="1"
//                  sampleSize="1001" timeScale="24000" width="1920"/>
//
// The codes are the host's. It is never handed pixel type 0, which stands for none.

namespace tses {
namespace {

constexpr kelcore::int32 kDefaultPixelType = 1;

struct FormatRecord {
    kelcore::int64 timeScale = 0;
    kelcore::int64 sampleSize = 0;
    kelcore::int32 pixelType = kDefaultPixelType;
    kelcore::int32 width = 0;
    kelcore::int32 height = 0;
    kelcore::uint32 parNumerator = kelmediatypes::kPixelAspectRatio_Unknown.numerator;
    kelcore::uint32 parDenominator = kelmediatypes::kPixelAspectRatio_Unknown.denominator;
    kelcore::uint32 fieldType = 0;
};

// Reading

void ReadPixelType(std::u16string_view text, FormatRecord& record) {
    ParseSigned(text, record.pixelType);
    if (record.pixelType == 0) {
        record.pixelType = kDefaultPixelType;
    }
}

constexpr Binding<FormatRecord> kBindings[] = {
    {names::fieldType, read::Number<&FormatRecord::fieldType>},
    {names::height, read::Number<&FormatRecord::height>},
    {names::parDenominator, read::Number<&FormatRecord::parDenominator>},
    {names::parNumerator, read::Number<&FormatRecord::parNumerator>},
    {names::pixelType, ReadPixelType},
    {names::sampleSize, read::Number<&FormatRecord::sampleSize>},
    {names::timeScale, read::Number<&FormatRecord::timeScale>},
    {names::width, read::Number<&FormatRecord::width>},
};

void Apply(const FormatRecord& record, IEditVideoFormat& format) {
    format.SetFrameTiming(record.timeScale, record.sampleSize);
    format.SetPixelType(record.pixelType);
    format.SetDimensions(record.width, record.height);
    format.SetPixelAspectRatio(record.parNumerator, record.parDenominator);
    format.SetFieldType(record.fieldType);
}

}  // namespace

void Serializer::Impl::StartVideoFormat(State state, const TagAttributes& attributes) {
    PushState(state);
    FormatRecord record;
    ReadAttributes<kBindings>(attributes, record);
    if (!clips_.videoClip) {
        return;
    }
    if (const auto format = Retain(clips_.videoClip->GetVideoFormat())) {
        Apply(record, *format);
    }
}

// Writing

namespace {

FormatRecord QueryFormat(IQueryVideoFormat& format) {
    FormatRecord record;
    record.timeScale = format.GetTimeScale();
    record.sampleSize = format.GetSampleSize();
    record.pixelType = format.GetPixelType();
    record.height = format.GetHeight();
    record.width = format.GetWidth();
    record.parNumerator = format.GetParNumerator();
    record.parDenominator = format.GetParDenominator();
    record.fieldType = format.GetFieldType();
    return record;
}

AttributeMap ToAttributes(const FormatRecord& record) {
    return {
        {names::timeScale, FormatInt64(record.timeScale)},
        {names::sampleSize, FormatInt64(record.sampleSize)},
        {names::pixelType, FormatSigned(record.pixelType)},
        {names::height, FormatSigned(record.height)},
        {names::width, FormatSigned(record.width)},
        {names::parNumerator, FormatUnsigned(record.parNumerator)},
        {names::parDenominator, FormatUnsigned(record.parDenominator)},
        {names::fieldType, FormatUnsigned(record.fieldType)},
    };
}

}  // namespace

bool WriteVideoFormat(SessionXMLWriter& writer, HostReference<IQueryVideoFormat> format) {
    return !format ||
           (writer.StartElement(names::videoFormat, ToAttributes(QueryFormat(*format))) &&
            writer.EndElement());
}

}  // namespace tses
