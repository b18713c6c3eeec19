#pragma once

#include <stop_token>
#include <string_view>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinMemInputStream.hpp>

namespace toolkit {

/// The document. It ends early when the parser is to stop.
class ContentSource final : public xercesc::InputSource {
public:
    ContentSource(std::string_view content, const std::stop_token& stop)
        : InputSource(u"session"), content_(content), stop_(stop) {}

    xercesc::BinInputStream* makeStream() const override { return new Stream(content_, stop_); }

private:
    class Stream final : public xercesc::BinMemInputStream {
    public:
        Stream(std::string_view content, const std::stop_token& stop)
            : BinMemInputStream(reinterpret_cast<const XMLByte*>(content.data()), content.size(),
                                BufOpt_Reference),
              stop_(stop) {}

        XMLSize_t readBytes(XMLByte* block, XMLSize_t size) override {
            return stop_.stop_requested() ? 0 : BinMemInputStream::readBytes(block, size);
        }

    private:
        const std::stop_token& stop_;
    };

    std::string_view content_;
    const std::stop_token& stop_;
};

}  // namespace toolkit
