#include "plugin/elements/clips/Writers.h"

#include "format/clips/VideoFormat.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

void Apply(const VideoFormatRecord& record, IEditVideoFormat& format) {
    format.SetFrameTiming(record.timeScale, record.sampleSize);
    format.SetPixelType(record.pixelType);
    format.SetDimensions(record.width, record.height);
    format.SetPixelAspectRatio(record.parNumerator, record.parDenominator);
    format.SetFieldType(record.fieldType);
}

}  // namespace

void Serializer::Impl::StartVideoFormat(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<VideoFormatRecord, kVideoFormatRows>(attributes);
    if (!clips_.videoClip) {
        return;
    }
    if (const auto format = Retain(clips_.videoClip->GetVideoFormat())) {
        Apply(record, *format);
    }
}

// Writing

namespace {

VideoFormatRecord QueryFormat(IQueryVideoFormat& format) {
    VideoFormatRecord record;
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

}  // namespace

bool WriteVideoFormat(SessionXMLWriter& writer, HostReference<IQueryVideoFormat> format) {
    return !format || (writer.StartElement(names::videoFormat,
                                           ToAttributes<kVideoFormatRows>(QueryFormat(*format))) &&
                       writer.EndElement());
}

}  // namespace tses
