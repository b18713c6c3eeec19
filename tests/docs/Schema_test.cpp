#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <set>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/common/Grammar.hpp>

#include "format/Names.h"
#include "platform/kelcore/Strings.h"
#include "tests/docs/FormatPage.h"
#include "tests/docs/WrittenDocuments.h"
#include "tests/docs/XmlElement.h"
#include "tests/support/SerializerFixture.h"
#include "tests/support/SourceFolder.h"

// docs/orvo.xsd: it accepts what the reader understands, and rejects what the reader would pass
// over.

namespace tses {
namespace {

using test::FormatPage;
using test::PageAttribute;
using test::PageSection;
using test::XmlElement;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using Errors = std::vector<std::string>;

constexpr unsigned kShuffles = 10;

class ErrorList final : public xercesc::DefaultHandler {
public:
    void warning(const xercesc::SAXParseException& exception) override { Add(exception); }
    void error(const xercesc::SAXParseException& exception) override { Add(exception); }
    void fatalError(const xercesc::SAXParseException& exception) override { Add(exception); }

    Errors errors;

private:
    void Add(const xercesc::SAXParseException& exception) {
        errors.push_back(std::to_string(exception.getLineNumber()) + ": " +
                         kelcore::UTF16to8(exception.getMessage()));
    }
};

/// A parser that knows docs/orvo.xsd and nothing else.
class Validator {
public:
    Validator()
        : pool_(xercesc::XMLPlatformUtils::fgMemoryManager),
          reader_(xercesc::XMLPlatformUtils::fgMemoryManager, &pool_) {
        reader_.setFeature(xercesc::XMLUni::fgSAX2CoreValidation, true);
        reader_.setFeature(xercesc::XMLUni::fgXercesSchema, true);
        reader_.setFeature(xercesc::XMLUni::fgXercesSchemaFullChecking, true);
        reader_.setFeature(xercesc::XMLUni::fgXercesLoadSchema, false);
        reader_.setFeature(xercesc::XMLUni::fgXercesUseCachedGrammarInParse, true);
        reader_.setErrorHandler(&list_);
        const std::u16string path = (test::SourceFolder() / "docs/orvo.xsd").u16string();
        reader_.loadGrammar(xercesc::LocalFileInputSource(path.c_str()),
                            xercesc::Grammar::SchemaGrammarType, true);
        schemaErrors = std::move(list_.errors);
    }

    Errors ErrorsOf(const std::string& document) {
        list_.errors.clear();
        reader_.parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(document.data()),
                                                 document.size(), "document"));
        return list_.errors;
    }

    Errors schemaErrors;

private:
    xercesc::XMLGrammarPoolImpl pool_;
    xercesc::SAX2XMLReaderImpl reader_;
    ErrorList list_;
};

class Schema : public test::SerializerFixture {
protected:
    Errors ErrorsOf(const std::string& document) { return validator.ErrorsOf(document); }

    /// The errors of the smallest document with this element, which is one of that section.
    Errors ErrorsOf(const PageSection& section, XmlElement element) {
        const PageSection* inner = &section;
        while (!inner->parents.empty()) {
            inner = &page.Section(inner->parents.front());
            XmlElement outer{inner->names.front()};
            outer.children.push_back(std::move(element));
            element = std::move(outer);
        }
        return ErrorsOf(ToXml(element));
    }

    /// Every section of the page that the schema looks into, with an element of its own.
    template <class Check>
    void ForEverySection(const Check& check) {
        for (const PageSection& section : page.Sections()) {
            if (section.holds != "anything") {
                for (const std::string& name : section.names) {
                    check(section, XmlElement{name});
                }
            }
        }
    }

    static std::vector<std::string> FilesLike(const std::string& folder) {
        std::vector<std::string> files;
        for (const auto& file :
             std::filesystem::recursive_directory_iterator(test::SourceFolder() / folder)) {
            if (file.path().extension() == ".orvo") {
                files.push_back(file.path());
            }
        }
        return files;
    }

    const FormatPage page;
    Validator validator;
};

void Shuffle(XmlElement& element, std::mt19937& random) {
    std::ranges::shuffle(element.children, random);
    for (XmlElement& child : element.children) {
        Shuffle(child, random);
    }
}

void Double(XmlElement& element) {
    for (XmlElement& child : element.children) {
        Double(child);
    }
    const std::vector<XmlElement> again = element.children;
    element.children.insert(element.children.end(), again.begin(), again.end());
}

TEST_F(Schema, IsOne) {
    EXPECT_THAT(validator.schemaErrors, IsEmpty());
}

TEST_F(Schema, AcceptsTheGoldenFilesAndTheExamples) {
    for (const char* const place : {"tests/golden", "examples"}) {
        const auto files = FilesLike(place);
        EXPECT_THAT(files, Not(IsEmpty()));
        for (const std::string& file : files) {
            EXPECT_THAT(ErrorsOf(test::ReadFile(file)), IsEmpty()) << file;
        }
    }
}

TEST_F(Schema, AcceptsWhatIsWrittenOfAnySessionThatAFileCanKeep) {
    for (const auto& session : test::StoredSessions()) {
        const auto written = Write(session);
        ASSERT_TRUE(written.ok);
        EXPECT_THAT(ErrorsOf(*written.file), IsEmpty()) << *written.file;
    }
}

TEST_F(Schema, AcceptsChildrenInAnyOrderAndNumber) {
    std::mt19937 random(1);
    for (const std::string& file : FilesLike("tests/golden")) {
        XmlElement document = test::ParseXml(test::ReadFile(file));
        for (unsigned i = 0; i < kShuffles; ++i) {
            Shuffle(document, random);
            EXPECT_THAT(ErrorsOf(ToXml(document)), IsEmpty());
        }
        for (XmlElement& part : document.children) {
            for (XmlElement& child : part.children) {
                Double(child);
            }
        }
        EXPECT_THAT(ErrorsOf(ToXml(document)), IsEmpty());
    }
}

TEST_F(Schema, AcceptsEveryElementInEachOfItsPlacesWithAllOfItsAttributes) {
    ForEverySection([&](const PageSection& section, XmlElement element) {
        for (const std::string& anchor : section.children) {
            for (const std::string& name : page.Section(anchor).names) {
                element.children.push_back({name});
                for (const PageAttribute& attribute : page.Section(anchor).attributes) {
                    element.children.back().attributes[attribute.name] = "any value";
                }
            }
        }
        EXPECT_THAT(ErrorsOf(section, element), IsEmpty()) << ToXml(element);
    });
}

TEST_F(Schema, RejectsAnAttributeThatIsNone) {
    ForEverySection([&](const PageSection& section, XmlElement element) {
        element.attributes["colour"] = "red";
        EXPECT_THAT(ErrorsOf(section, element), ElementsAre(HasSubstr("'colour'")))
            << ToXml(element);
    });
}

TEST_F(Schema, RejectsEveryAttributeThatMeansNothingInAnElement) {
    ForEverySection([&](const PageSection& section, XmlElement element) {
#define TSES_SET_STRANGER(name)                                  \
    if (section.FindAttribute(#name) == nullptr) {               \
        element.attributes[kelcore::UTF16to8(names::name)] = ""; \
    }
        TSES_NAMES(TSES_SET_STRANGER)
#undef TSES_SET_STRANGER
        EXPECT_THAT(ErrorsOf(section, element), SizeIs(element.attributes.size()))
            << ToXml(element);
    });
}

TEST_F(Schema, RejectsAnElementThatIsNone) {
    ForEverySection([&](const PageSection& section, XmlElement element) {
        element.children.push_back({"colour"});
        EXPECT_THAT(ErrorsOf(section, element), Not(IsEmpty())) << ToXml(element);
    });
}

TEST_F(Schema, RejectsEveryElementWhereItMeansNothing) {
    std::set<std::string> names;
    for (const PageSection& section : page.Sections()) {
        names.insert(section.names.begin(), section.names.end());
    }
    ForEverySection([&](const PageSection& section, const XmlElement& element) {
        for (const std::string& name : names) {
            XmlElement parent = element;
            parent.children.push_back({name});
            const bool belongs = page.Child(section, name) != nullptr;
            EXPECT_EQ(ErrorsOf(section, parent).empty(), belongs) << ToXml(parent);
        }
    });
}

TEST_F(Schema, RejectsTextWhereNoneIsRead) {
    ForEverySection([&](const PageSection& section, XmlElement element) {
        element.text = "\n  ";
        EXPECT_THAT(ErrorsOf(section, element), IsEmpty()) << ToXml(element);
        element.text = "text";
        EXPECT_EQ(ErrorsOf(section, element).empty(), section.text != "none") << ToXml(element);
    });
}

TEST_F(Schema, RejectsEveryOtherDocumentElement) {
    for (const PageSection& section : page.Sections()) {
        for (const std::string& name : section.names) {
            EXPECT_EQ(ErrorsOf("<" + name + "/>").empty(), name == "orvo") << name;
        }
    }
}

TEST_F(Schema, RejectsNamesOfANamespace) {
    EXPECT_THAT(ErrorsOf("<orvo xmlns='urn:x'/>"), Not(IsEmpty()));
    EXPECT_THAT(ErrorsOf("<orvo xmlns:x='urn:x'><x:session/></orvo>"), Not(IsEmpty()));
}

TEST_F(Schema, AcceptsAnythingInTheElementThatIsSetAside) {
    EXPECT_THAT(ErrorsOf("<orvo><session><workspaceSettings colour='red'>text<colour>"
                         "<session/></colour></workspaceSettings></session></orvo>"),
                IsEmpty());
}

}  // namespace
}  // namespace tses
