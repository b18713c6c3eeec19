#include "toolkit/scan/StoredPaths.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <system_error>
#include <utility>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "format/Ids.h"
#include "format/Names.h"
#include "platform/kelcore/Numbers.h"
#include "toolkit/scan/LibraryUse.h"
#include "toolkit/scan/ParsedAttributes.h"

namespace toolkit {
namespace {

namespace names = tses::names;

/// A file as a stream of its own, so that the caller can see how far it has been read.
class FileSource final : public xercesc::InputSource {
public:
    explicit FileSource(const std::string& path) : InputSource(u"session"), path_(path) {}

    xercesc::BinInputStream* makeStream() const override { return new Stream(path_); }

private:
    class Stream final : public xercesc::BinInputStream {
    public:
        explicit Stream(const std::string& path) : file_(path, std::ios::binary) {}

        XMLFilePos curPos() const override { return position_; }
        XMLSize_t readBytes(XMLByte* block, XMLSize_t size) override {
            file_.read(reinterpret_cast<char*>(block), static_cast<std::streamsize>(size));
            const auto got = static_cast<XMLSize_t>(file_.gcount());
            position_ += got;
            return got;
        }
        const XMLCh* getContentType() const override { return nullptr; }

    private:
        std::ifstream file_;
        XMLFilePos position_ = 0;
    };

    const std::string& path_;
};

constexpr std::u16string_view kPlaceOfFiles[] = {names::orvo, names::files, names::file};

/// Handles only start and end tags.
class Finder final : public xercesc::SAX2XMLReaderImpl {
public:
    Finder() {
        setProperty(xercesc::XMLUni::fgXercesScannerName,
                    const_cast<XMLCh*>(xercesc::XMLUni::fgDGXMLScanner));
        setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
        setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
        setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
        setContentHandler(&errors_);  // or the scanner does not report elements
        setErrorHandler(&errors_);
    }

    void startElement(const xercesc::XMLElementDecl& declaration, unsigned int /*uri*/,
                      const XMLCh* /*prefix*/, const ParsedAttributes::List& attributes,
                      XMLSize_t count, bool isEmpty, bool /*isRoot*/) override {
        if (depth_ == fitting_ && fitting_ < std::size(kPlaceOfFiles) &&
            ViewOf(declaration.getBaseName()) == kPlaceOfFiles[fitting_]) {
            ++fitting_;
            if (fitting_ == std::size(kPlaceOfFiles)) {
                Add(attributes_.Take(attributes, count));
            }
        }
        ++depth_;
        if (isEmpty) {
            endElement(declaration, 0, false, nullptr);
        }
    }
    void endElement(const xercesc::XMLElementDecl& /*declaration*/, unsigned int /*uri*/,
                    bool /*isRoot*/, const XMLCh* /*prefix*/) override {
        --depth_;
        fitting_ = std::min(fitting_, depth_);
    }
    void docCharacters(const XMLCh* /*text*/, XMLSize_t /*length*/, bool /*section*/) override {}

    std::map<kelcore::uint32, StoredPaths> Found() && { return std::move(found_); }

private:
    class Errors final : public xercesc::DefaultHandler {
        void fatalError(const xercesc::SAXParseException& exception) override { throw exception; }
    };

    void Add(const ScannedAttributes& attributes) {
        kelcore::uint32 id = tses::kNoId;
        kelcore::StringToNumber(attributes.Find(names::id).value_or(u""), id);
        found_[id] = {std::u16string(attributes.Find(names::absolutePath).value_or(u"")),
                      std::u16string(attributes.Find(names::relativePath).value_or(u""))};
    }

    Errors errors_;
    ParsedAttributes attributes_;
    std::size_t depth_ = 0;
    std::size_t fitting_ = 0;  // how many of the open elements lead to the files
    std::map<kelcore::uint32, StoredPaths> found_;
};

}  // namespace

std::map<kelcore::uint32, StoredPaths> FindStoredPaths(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return {};
    }
    const LibraryUse library;
    const FileSource source(path);
    Finder finder;
    try {
        finder.parse(source);
    } catch (const xercesc::SAXException&) {
        // The plug-in has read the file. If it has changed since, what was found so far still
        // counts.
    } catch (const xercesc::XMLException&) {
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    }
    return std::move(finder).Found();
}

}  // namespace toolkit
