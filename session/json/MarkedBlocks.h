#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvo::json {

/// Prepares JSON that comes in pieces for the library: replaces lone surrogates with marks
/// (LoneSurrogates.h) and drops most blanks, which would cost half of the parsing time. Keeps the
/// blanks that an error message could quote.
class MarkedBlocks {
public:
    struct Block {
        std::string_view text;  ///< until the next one is made
        std::size_t
            origin;  ///< how many bytes of JSON it is made of, the last one of its last character
    };

    /// Makes the next block. What may go on behind the end of the JSON is left for the one after.
    /// @param json   what follows what the last block was made of
    /// @param isEnd  whether nothing follows
    Block Make(std::string_view json, bool isEnd);

    /// Where in the JSON that the latest block is made of its character `offset` comes from, or the
    /// end of that JSON for one behind the block.
    std::size_t OriginOf(std::string_view json, std::size_t offset) const;

private:
    bool inText_ = false;
    bool beganInText_ = false;  // the latest block
    std::vector<char> text_;
};

}  // namespace orvo::json
