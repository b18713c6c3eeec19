#pragma once

#include <span>
#include <xercesc/framework/XMLFormatter.hpp>

#include "plugin/xml/ContentBuffer.h"

namespace tses {

/// Keeps what a serialiser writes in memory, in one piece.
class ContentTarget final : public xercesc::XMLFormatTarget {
public:
    void writeChars(const XMLByte* bytes, XMLSize_t count,
                    xercesc::XMLFormatter* /*formatter*/) override {
        content_.Append(bytes, count);
    }

    /// Everything written so far; valid until more is written.
    std::span<const XMLByte> Bytes() const { return content_.Bytes(); }

    void Clear() { content_.Truncate(0); }

private:
    ContentBuffer content_;
};

}  // namespace tses
