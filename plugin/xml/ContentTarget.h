#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>
#include <xercesc/framework/XMLFormatter.hpp>

namespace tses {

/// Keeps what a serialiser writes in memory, in one piece. Unlike the library's own target, it does
/// not hold everything twice while it grows: the system grows large blocks of memory by remapping
/// their pages.
class ContentTarget final : public xercesc::XMLFormatTarget {
public:
    void writeChars(const XMLByte* bytes, XMLSize_t count,
                    xercesc::XMLFormatter* formatter) override;

    /// Everything written so far; valid until more is written.
    std::span<const XMLByte> Bytes() const { return {bytes_.get(), size_}; }

    void Clear() { size_ = 0; }

private:
    struct Free {
        void operator()(XMLByte* bytes) const { std::free(bytes); }
    };

    void Grow(std::size_t least);

    std::unique_ptr<XMLByte[], Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace tses
