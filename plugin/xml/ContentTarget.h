#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>
#include <xercesc/framework/XMLFormatter.hpp>

namespace tses {

/// Takes what a serialiser writes and keeps it in memory, in one piece. Unlike the library's own
/// target it does not hold all of it twice while it grows: the system moves large pieces of memory
/// by their pages.
class ContentTarget final : public xercesc::XMLFormatTarget {
public:
    void writeChars(const XMLByte* bytes, XMLSize_t count,
                    xercesc::XMLFormatter* formatter) override;

    /// All of it, valid until more is written.
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
