#pragma once

#include <string>
#include <vector>

#include "host/Registration.h"
#include "reference_host/CountedObject.h"

namespace test {

/// Keeps everything that a plug-in registers, and in which order. Starts with one reference.
class Registrar final : public refhost::CountedObject<tses::IPlugInRegistrar> {
public:
    struct InterfaceVersion {
        kelcore::int32 a = 0;
        kelcore::int32 b = 0;

        friend bool operator==(const InterfaceVersion&, const InterfaceVersion&) = default;
    };
    struct Identity {
        std::string guid;
        std::u16string displayName;

        friend bool operator==(const Identity&, const Identity&) = default;
    };
    struct Format {
        std::u16string name;
        std::vector<std::u16string> extensions;

        friend bool operator==(const Format&, const Format&) = default;
    };

    /// Whether the last registration throws.
    bool throws = false;

    void UnusedSlot3() override {}
    void DeclareInterfaceVersion(kelcore::int32 a, kelcore::int32 b) override {
        calls_.emplace_back("version");
        interfaceVersions_.push_back({a, b});
    }
    void UnusedSlot5() override {}
    void SetPlugInIdentity(const char* guid, const kelcore::char16* displayName) override {
        calls_.emplace_back("identity");
        identities_.push_back({guid, displayName});
    }
    void RegisterOpenFormat(const kelcore::char16* formatName,
                            const kelcore::char16* const* extensions,
                            kelcore::int32 extensionCount) override {
        calls_.emplace_back("open format");
        openFormats_.push_back({formatName, {extensions, extensions + extensionCount}});
    }
    void RegisterSaveFormat(const kelcore::char16* formatName,
                            const kelcore::char16* const* extensions,
                            kelcore::int32 extensionCount) override {
        calls_.emplace_back("save format");
        saveFormats_.push_back({formatName, {extensions, extensions + extensionCount}});
        if (throws) {
            throw 42;
        }
    }

    const std::vector<std::string>& Calls() const { return calls_; }
    const std::vector<InterfaceVersion>& InterfaceVersions() const { return interfaceVersions_; }
    const std::vector<Identity>& Identities() const { return identities_; }
    const std::vector<Format>& OpenFormats() const { return openFormats_; }
    const std::vector<Format>& SaveFormats() const { return saveFormats_; }

private:
    std::vector<std::string> calls_;
    std::vector<InterfaceVersion> interfaceVersions_;
    std::vector<Identity> identities_;
    std::vector<Format> openFormats_;
    std::vector<Format> saveFormats_;
};

}  // namespace test
