#include "session/json/Encode.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "session/json/RealTexts.h"

namespace orvo::json {
namespace {

/// The double whose shortest text is that of the float, so that 0.1 does not become
/// 0.10000000149011612; the float itself where that would not read back as it.
double ShortForm(float value) {
    char text[32];
    const char* const end = std::to_chars(std::begin(text), std::end(text), value).ptr;
    double shortForm = 0;
    std::from_chars(std::begin(text), end, shortForm);
    return static_cast<float>(shortForm) == value ? shortForm : static_cast<double>(value);
}

}  // namespace

void Encode(JsonWriter& out, bool value) {
    out.Plain(value ? "true" : "false");
}

void Encode(JsonWriter& out, double value) {
    if (std::isnan(value)) {
        out.Quoted(kNotANumber);
    } else if (std::isinf(value)) {
        out.Quoted(value > 0 ? kInfinity : kMinusInfinity);
    } else {
        out.Plain(nlohmann::json(value).dump());
    }
}

void Encode(JsonWriter& out, float value) {
    Encode(out, std::isfinite(value) ? ShortForm(value) : static_cast<double>(value));
}

void Encode(JsonWriter& out, const std::string& text) {
    out.Text(text);
}

void Encode(JsonWriter& out, const std::vector<kelcore::byte>& block) {
    out.Bytes(block.data(), block.size());
}

}  // namespace orvo::json
