#include "toolkit/interchange/XmlWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "platform/kelcore/Unicode.h"

namespace toolkit::interchange {
namespace {

namespace unicode = kelcore::unicode;

constexpr std::size_t kBlockSize = 1 << 16;

bool IsPlain(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x20 && byte < 0x7F && c != '<' && c != '>' && c != '&' && c != '"';
}

/// Whether an XML 1.0 document may hold the character.
bool IsCarried(const unicode::Utf8Part& part) {
    const char32_t c = part.codePoint;
    const bool isControl = c < 0x20 && c != '\t' && c != '\n' && c != '\r';
    return part.wellFormed && !isControl && !unicode::IsSurrogate(c) && c != 0xFFFE && c != 0xFFFF;
}

/// The entity or character reference that must stand for the character; empty if it stands itself.
std::string_view ReferenceTo(char32_t c, bool isAttribute) {
    switch (c) {
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '&':
            return "&amp;";
        case '"':
            return isAttribute ? "&quot;" : "";
        case '\r':
            return "&#13;";
        case '\n':
            return isAttribute ? "&#10;" : "";
        case '\t':
            return isAttribute ? "&#9;" : "";
        default:
            return "";
    }
}

}  // namespace

XmlWriter::XmlWriter(Sink sink)
    : sink_(std::move(sink)), block_(R"(<?xml version="1.0" encoding="UTF-8"?>)") {}

XmlWriter& XmlWriter::Open(std::string_view name) {
    EndTag();
    Indent();
    block_ += '<';
    block_ += name;
    open_.push_back(name);
    isTagOpen_ = true;
    hasText_ = false;
    return *this;
}

XmlWriter& XmlWriter::Attribute(std::string_view name, std::string_view value) {
    block_ += ' ';
    block_ += name;
    block_ += "=\"";
    Escape(value, true);
    block_ += '"';
    return *this;
}

XmlWriter& XmlWriter::Attribute(std::string_view name, double value) {
    if (std::isinf(value)) {
        return Attribute(name, value < 0 ? "-INF" : "INF");
    }
    return Attribute(name, std::string_view(fmt::format("{}", value)));
}

void XmlWriter::Text(std::string_view text) {
    EndTag();
    Escape(text, false);
    hasText_ = true;
}

void XmlWriter::Close() {
    const std::string_view name = open_.back();
    open_.pop_back();
    if (isTagOpen_) {
        block_ += "/>";
        isTagOpen_ = false;
    } else {
        if (!hasText_) {
            Indent();
        }
        fmt::format_to(std::back_inserter(block_), "</{}>", name);
    }
    hasText_ = false;
    if (open_.empty()) {
        block_ += '\n';
        Flush();
    } else if (block_.size() >= kBlockSize) {
        Flush();
    }
}

void XmlWriter::EndTag() {
    if (isTagOpen_) {
        block_ += '>';
        isTagOpen_ = false;
    }
}

void XmlWriter::Indent() {
    block_ += '\n';
    block_.append(2 * open_.size(), ' ');
}

void XmlWriter::Escape(std::string_view text, bool isAttribute) {
    while (!text.empty()) {
        const auto* const special = std::ranges::find_if_not(text, IsPlain);
        const auto plain = static_cast<std::size_t>(special - text.begin());
        block_.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) {
            return;
        }
        const unicode::Utf8Part part = unicode::FirstPart(text);
        const std::string_view reference =
            part.wellFormed ? ReferenceTo(part.codePoint, isAttribute) : "";
        if (!reference.empty()) {
            block_ += reference;
        } else if (IsCarried(part)) {
            unicode::AppendUtf8(block_, part.codePoint);
        } else {
            unicode::AppendUtf8(block_, U'\uFFFD');
            ++replaced_;
        }
        text.remove_prefix(part.length);
    }
}

void XmlWriter::Flush() {
    sink_(block_);
    block_.clear();
}

}  // namespace toolkit::interchange
