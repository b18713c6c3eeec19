#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include "toolkit/scan/NextBytes.h"

namespace toolkit {

/// A document for one parse.
class ContentSource final : public xercesc::InputSource {
public:
    explicit ContentSource(NextBytes next) : InputSource(u"session"), next_(std::move(next)) {}

    xercesc::BinInputStream* makeStream() const override { return new Stream(next_); }

private:
    class Stream final : public xercesc::BinInputStream {
    public:
        explicit Stream(const NextBytes& next) : next_(next) {}

        XMLFilePos curPos() const override { return position_; }
        const XMLCh* getContentType() const override { return nullptr; }

        XMLSize_t readBytes(XMLByte* block, XMLSize_t size) override {
            XMLSize_t count = 0;
            while (count < size && HasMore()) {
                const XMLSize_t part = std::min<XMLSize_t>(rest_.size(), size - count);
                std::memcpy(block + count, rest_.data(), part);
                rest_.remove_prefix(part);
                count += part;
            }
            position_ += count;
            return count;
        }

    private:
        bool HasMore() {
            if (rest_.empty()) {
                rest_ = next_();
            }
            return !rest_.empty();
        }

        const NextBytes& next_;
        std::string_view rest_;
        XMLFilePos position_ = 0;
    };

    NextBytes next_;
};

}  // namespace toolkit
