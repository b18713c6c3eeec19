#pragma once

#include <boost/function.hpp>
#include <string_view>

#include "platform/kelcore/Types.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// A block of bytes that the host gives in two steps, whoever it belongs to.
struct EventBlockSource {
    boost::function<kelcore::uint32()> size;
    /// Fills a buffer of that size; false means that there is nothing to write.
    boost::function<bool(kelcore::byte* buffer)> fill;
};

/// Writes the block, if there is one, as the text of an element of its own. An element that the
/// writer refuses is left out and does not fail the element around it; a block that there is no
/// memory for, or that is longer than a document takes, fails the save.
void WriteEventBlock(SessionXMLWriter& writer, std::u16string_view element,
                     const EventBlockSource& source);

}  // namespace tses
