#include "toolkit/interchange/dawproject/ProjectDocument.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "toolkit/interchange/Failure.h"
#include "toolkit/interchange/dawproject/Entries.h"

namespace toolkit::interchange::dawproject {
namespace {

std::vector<std::size_t> LineEndsOf(std::string_view text) {
    std::vector<std::size_t> ends;
    for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n', end + 1)) {
        ends.push_back(end);
    }
    return ends;
}

std::string PlaceOfLine(std::size_t line) {
    return fmt::format("{}:{}", kProjectEntry, line);
}

std::string_view WithoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace

ProjectDocument::ProjectDocument(const Import& job, std::string_view text)
    : job_(job), lineEnds_(LineEndsOf(text)) {
    const pugi::xml_parse_result parsed =
        document_.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_doctype);
    if (!parsed) {
        const auto end =
            std::ranges::lower_bound(lineEnds_, static_cast<std::size_t>(parsed.offset));
        throw Failure(
            {.file = job.file.string(),
             .what = fmt::format("{}: {}",
                                 PlaceOfLine(static_cast<std::size_t>(end - lineEnds_.begin() + 1)),
                                 parsed.description())});
    }
    for (const pugi::xml_node& node : document_.children()) {
        if (node.type() == pugi::node_doctype) {
            Refuse(node, "has a document type, which a DAWproject file never has");
        }
    }
    if (!IsNamed(Root(), "Project")) {
        Refuse(Root(), fmt::format("the root element is <{}>, not <Project>", Root().name()));
    }
    for (pugi::xml_node element = Root(); !element.empty(); element = NextElement(element)) {
        if (const pugi::xml_attribute id = element.attribute("id")) {
            byId_.emplace_back(id.value(), element);
        }
    }
    std::ranges::stable_sort(byId_, {}, [](const auto& entry) { return entry.first; });
}

pugi::xml_node ProjectDocument::Find(std::string_view id) const {
    const auto found =
        std::ranges::lower_bound(byId_, id, {}, [](const auto& entry) { return entry.first; });
    return found != byId_.end() && found->first == id ? found->second : pugi::xml_node();
}

std::size_t ProjectDocument::LineOf(const pugi::xml_node& element) const {
    const std::ptrdiff_t offset = std::max<std::ptrdiff_t>(element.offset_debug(), 0);
    const auto end = std::ranges::lower_bound(lineEnds_, static_cast<std::size_t>(offset));
    return static_cast<std::size_t>(end - lineEnds_.begin()) + 1;
}

std::string ProjectDocument::PlaceOf(const pugi::xml_node& element) const {
    return PlaceOfLine(LineOf(element));
}

void ProjectDocument::Refuse(const pugi::xml_node& element, std::string what,
                             std::string advice) const {
    throw Failure({.file = job_.file.string(),
                   .what = fmt::format("{}: {}", PlaceOf(element), what),
                   .advice = std::move(advice)});
}

void ProjectDocument::Report(orvo::Fidelity fidelity, const pugi::xml_node& element,
                             std::string_view what, std::string_view value) const {
    job_.reporter.Add(fidelity, PlaceOf(element), what, value);
}

std::optional<double> ProjectDocument::Number(const pugi::xml_node& element,
                                              const char* attribute) const {
    const pugi::xml_attribute found = element.attribute(attribute);
    if (!found) {
        return std::nullopt;
    }
    const std::optional<double> number = NumberOf(found.value());
    if (!number || !std::isfinite(*number)) {
        Refuse(element, fmt::format("{}=\"{:.40}\" of <{}> is no number", attribute, found.value(),
                                    element.name()));
    }
    return number;
}

std::int64_t ProjectDocument::Samples(const pugi::xml_node& element, double seconds,
                                      std::uint32_t sampleRate) const {
    // Differences of two such positions still fit, and doubles count them exactly.
    constexpr double kMost = 4503599627370496.0;
    const double samples = seconds * sampleRate;
    if (!(std::abs(samples) <= kMost)) {
        Refuse(element, fmt::format("a time of <{}> is beyond all sessions", element.name()));
    }
    return std::llround(samples);
}

std::optional<double> NumberOf(std::string_view text) {
    text = WithoutBlanks(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = end == text.data() + text.size() && !text.empty();
    if (error == std::errc::result_out_of_range && isWhole) {
        // Too small for a double, or too large for any session.
        return text.find("e-") != text.npos || text.find("E-") != text.npos
                   ? 0
                   : std::numeric_limits<double>::infinity();
    }
    return error == std::errc() && isWhole && !std::isnan(number) ? std::optional(number)
                                                                  : std::nullopt;
}

pugi::xml_node NextElement(pugi::xml_node element) {
    if (!element.first_child().empty()) {
        return element.first_child();
    }
    while (!element.empty() && element.next_sibling().empty()) {
        element = element.parent();
    }
    return element.next_sibling();
}

bool IsNamed(const pugi::xml_node& element, std::string_view name) {
    return element.name() == name;
}

bool IsTrue(const pugi::xml_node& element, const char* attribute, bool absent) {
    const pugi::xml_attribute found = element.attribute(attribute);
    if (!found) {
        return absent;
    }
    const std::string_view text = WithoutBlanks(found.value());
    return text == "true" || text == "1";
}

}  // namespace toolkit::interchange::dawproject
