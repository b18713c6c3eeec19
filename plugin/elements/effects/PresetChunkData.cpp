#include "plugin/elements/effects/Writers.h"

#include "format/ValueEncoding.h"
#include "plugin/serializer/SerializerImpl.h"

// The state of an effect, which only the effect understands:
//
//     <presetChunkData><![CDATA[AAEC...]]></presetChunkData>
//
// Text that cannot be decoded, or that decodes to no bytes, leaves the effect as it is.

namespace tses {

void Serializer::Impl::EndPresetChunkData() {
    const std::vector<kelcore::byte>& bytes = CollectedBlock();
    if (effects_.component && !bytes.empty()) {
        effects_.component->SetPresetChunk(bytes.data(),
                                           static_cast<kelcore::uint32>(bytes.size()));
    }
}

bool WritePresetChunkData(SessionXMLWriter& writer, IQueryComponent& component) {
    const kelcore::uint32 size = component.GetPresetChunkSize();
    if (!writer.TakesBlock(size)) {
        return false;
    }
    std::vector<kelcore::byte> bytes(size);
    if (bytes.empty() || !component.GetPresetChunk(bytes.data())) {
        return true;
    }
    return writer.StartElement(names::presetChunkData) && writer.Characters(EncodeBlock(bytes)) &&
           writer.EndElement();
}

}  // namespace tses
