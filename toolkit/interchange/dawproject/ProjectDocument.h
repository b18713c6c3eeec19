#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/interchange/Format.h"

namespace toolkit::interchange::dawproject {

/// The deepest nesting that is followed. Programs nest a dozen elements.
inline constexpr int kDeepest = 64;

/// The parsed `project.xml`, and where its elements stand.
class ProjectDocument {
public:
    /// @param file  the archive, for messages
    /// @throws Failure  if the text is no XML, or has a document type
    ProjectDocument(const Import& job, std::string_view text);

    pugi::xml_node Root() const { return document_.document_element(); }

    /// The element with an id; empty if there is none. Of several the first one counts.
    pugi::xml_node Find(std::string_view id) const;

    /// "project.xml:12", for reports.
    std::string PlaceOf(const pugi::xml_node& element) const;

    /// @throws Failure  always
    [[noreturn]] void Refuse(const pugi::xml_node& element, std::string what,
                             std::string advice = {}) const;

    /// Adds a fact at an element.
    void Report(orvo::Fidelity fidelity, const pugi::xml_node& element, std::string_view what,
                std::string_view value = {}) const;

    const Import& Job() const { return job_; }

    // Attributes

    /// A number; no value if the attribute is absent.
    /// @throws Failure  if it is no finite number
    std::optional<double> Number(const pugi::xml_node& element, const char* attribute) const;

    /// A position in the session.
    /// @throws Failure  if it is not finite or too large
    std::int64_t Samples(const pugi::xml_node& element, double seconds,
                         std::uint32_t sampleRate) const;

private:
    std::size_t LineOf(const pugi::xml_node& element) const;

    const Import& job_;
    pugi::xml_document document_;
    std::vector<std::size_t> lineEnds_;
    std::vector<std::pair<std::string_view, pugi::xml_node>> byId_;
};

/// An attribute's text as a number: digits, or an infinity; no value for any other text.
std::optional<double> NumberOf(std::string_view text);

/// The next node in the order of the document, without recursion; empty at the end.
pugi::xml_node NextElement(pugi::xml_node element);

bool IsNamed(const pugi::xml_node& element, std::string_view name);

/// An attribute that is "true" or "false".
bool IsTrue(const pugi::xml_node& element, const char* attribute, bool absent);

}  // namespace toolkit::interchange::dawproject
