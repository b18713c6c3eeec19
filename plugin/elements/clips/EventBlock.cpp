#include "plugin/elements/clips/EventBlock.h"

#include "format/ValueEncoding.h"

namespace tses {

void WriteEventBlock(SessionXMLWriter& writer, std::u16string_view element,
                     const EventBlockSource& source) {
    const kelcore::uint32 size = source.size();
    if (!writer.TakesBlock(size)) {
        return;
    }
    std::vector<kelcore::byte> bytes(size);
    if (bytes.empty() || !source.fill(bytes.data())) {
        return;
    }
    if (writer.StartElement(element)) {
        writer.Characters(EncodeBlock(bytes));
        writer.EndElement();  // even without the text, so that what follows stands beside it
    }
}

}  // namespace tses
