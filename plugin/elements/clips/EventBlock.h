#pragma once

#include <boost/function.hpp>
#include <string_view>

#include "platform/kelcore/Types.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// A block of bytes that a host hands over in two steps: first its size, then its bytes.
struct EventBlockSource {
    boost::function<kelcore::uint32()> size;
    /// Fills a buffer of that size; false means that there is nothing to write.
    boost::function<bool(kelcore::byte* buffer)> fill;
};

/// Writes the block, if there is one, as the text of an element of its own. If the writer refuses
/// the element, it is left out, and the element around it does not fail. A block that is too large
/// for the memory or for a document fails the save.
void WriteEventBlock(SessionXMLWriter& writer, std::u16string_view element,
                     const EventBlockSource& source);

}  // namespace tses
