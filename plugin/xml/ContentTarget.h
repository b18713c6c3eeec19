#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>
#include <xercesc/framework/XMLFormatter.hpp>

#include "platform/kelcore/Types.h"

namespace tses {

/// Takes what a serialiser writes and keeps it in memory, in blocks that are never moved: beside
/// the bytes themselves it takes up at most one block.
class ContentTarget final : public xercesc::XMLFormatTarget {
public:
    void writeChars(const XMLByte* bytes, XMLSize_t count,
                    xercesc::XMLFormatter* formatter) override;

    /// How many bytes there are.
    kelcore::uint64 Size() const;

    /// Hands them out, in order, as `take(const XMLByte* bytes, std::size_t count)`.
    template <class Take>
    void ForEachBlock(Take take) const {
        for (const auto& block : blocks_) {
            take(block->data(), block == blocks_.back() ? kBlockSize - room_ : kBlockSize);
        }
    }

    void Clear();

private:
    static constexpr std::size_t kBlockSize = 65536;
    using Block = std::array<XMLByte, kBlockSize>;

    void Take(const XMLByte* bytes, std::size_t count);
    void Append(const XMLByte* bytes, std::size_t count);
    void AddBlock();

    std::vector<std::unique_ptr<Block>> blocks_;
    XMLByte* next_ = nullptr;
    std::size_t room_ = 0;  // behind next_, in the last block
};

}  // namespace tses
