#include "tests/docs/GoldenElements.h"

#include <set>

#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"

namespace test {
namespace {

XmlElement WithoutContent(const XmlElement& element) {
    return {element.name, element.attributes};
}

class Collector {
public:
    explicit Collector(const FormatPage& page) : page_(page) {}

    void Visit(const XmlElement& element, const PageSection& section) {
        around_.push_back(WithoutContent(element));
        for (const XmlElement& child : element.children) {
            if (const PageSection* const found = page_.Child(section, child.name)) {
                Take(child, *found);
                Visit(child, *found);
            }
        }
        around_.pop_back();
    }

    std::vector<GoldenElement> collected;

private:
    void Take(const XmlElement& element, const PageSection& section) {
        std::string key = section.anchor;
        for (const auto& [name, value] : element.attributes) {
            key += " " + name;
        }
        if (taken_.insert(key).second) {
            collected.push_back({&section, around_, WithoutContent(element)});
            XmlElement& alone = collected.back().element;
            alone.text = element.text;
            if (!element.children.empty()) {
                alone.children.push_back(WithoutContent(element.children.front()));
            }
        }
    }

    const FormatPage& page_;
    std::vector<XmlElement> around_;
    std::set<std::string> taken_;
};

}  // namespace

std::vector<GoldenElement> GoldenElements(const FormatPage& page) {
    Collector collector(page);
    for (const char* const name : {"everything.orvo", "read-only.orvo"}) {
        const std::string document = ReadFile(SourceFolder() / "tests/golden" / name);
        collector.Visit(ParseXml(document), page.Root());
    }
    return collector.collected;
}

std::string DocumentOf(const GoldenElement& golden,
                       const std::map<std::string, std::string>& attributes) {
    XmlElement document = golden.element;
    document.attributes = attributes;
    for (auto parent = golden.around.rbegin(); parent != golden.around.rend(); ++parent) {
        XmlElement outer = *parent;
        outer.children.push_back(std::move(document));
        document = std::move(outer);
    }
    return ToXml(document);
}

}  // namespace test
