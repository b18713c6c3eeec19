#include "platform/kelcore/BinaryText.h"

#include <algorithm>
#include <new>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/Base64.hpp>

namespace kelcore {
namespace {

/// The memory of one call of the codec, given back when the call is over. The library's own manager
/// exists only while the library is started, and the codec does not release all it took when it
/// fails.
class CallMemory final : public xercesc::MemoryManager {
public:
    void* allocate(XMLSize_t size) override { return blocks_.emplace_back(size).data(); }

    void deallocate(void* block) override {
        std::erase_if(blocks_, [block](const auto& owned) { return owned.data() == block; });
    }

    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

private:
    std::vector<std::vector<byte>> blocks_;
};

bool IsWhiteSpace(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

/// The codec takes a text up to its first zero, and its table has no entry for the byte 0xFF.
bool IsSafeForCodec(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char character) {
        return character != '\0' && static_cast<unsigned char>(character) < 0x80;
    });
}

}  // namespace

std::string EncodeBinaryDataToUTF8String(const byte* data, std::size_t size) {
    if (size == 0) {
        return {};
    }
    CallMemory memory;
    XMLSize_t length = 0;
    const XMLByte* const text = xercesc::Base64::encode(data, size, &length, &memory);
    if (text == nullptr) {
        throw std::bad_alloc();
    }
    return {text, text + length};
}

bool DecodeBinaryDataFromUTF8String(std::string_view text, std::vector<byte>& bytes) {
    bytes.clear();
    if (std::all_of(text.begin(), text.end(), IsWhiteSpace)) {
        return true;
    }
    if (!IsSafeForCodec(text)) {
        return false;
    }
    const std::vector<XMLByte> terminated = [text] {
        std::vector<XMLByte> copy;
        copy.reserve(text.size() + 1);
        copy.assign(text.begin(), text.end());
        copy.push_back(0);
        return copy;
    }();
    CallMemory memory;
    XMLSize_t length = 0;
    const XMLByte* const decoded =
        xercesc::Base64::decode(terminated.data(), &length, &memory, xercesc::Base64::Conf_RFC2045);
    if (decoded == nullptr) {
        return false;
    }
    bytes.assign(decoded, decoded + length);
    return true;
}

}  // namespace kelcore
