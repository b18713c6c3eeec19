#pragma once

#include "host/Files.h"
#include <orvo/File.h>
#include "reference_host/Node.h"

namespace refhost {

class EditFile final : public Face<tses::IEditFile, orvo::File> {
public:
    using Face::Face;

    void SetPath(const kelcore::char16* path) override { Value().path = kelcore::UTF16to8(path); }
    void SetRecoveryId(const kelcore::char16* recoveryId) override {
        Value().recoveryId = kelcore::UTF16to8(recoveryId);
    }
    void SetMediaHandler(const kelcore::char16* handlerId) override {
        Value().mediaHandler = kelcore::UTF16to8(handlerId);
    }
    void SetImporterPrivateSettings(const kelcore::char16* settings) override {
        Value().importerPrivateSettings = kelcore::UTF16to8(settings);
    }
};

class QueryFile final : public Face<tses::IQueryFile, orvo::File> {
public:
    using Face::Face;

    kelcore::uint32 GetId() override { return Value().id; }
    tses::IHostString* GetPath() override { return GiveOut(Value().path); }
    tses::IHostString* GetRecoveryId() override { return GiveOut(Value().recoveryId); }
    tses::IHostString* GetMediaHandler() override { return GiveOut(Value().mediaHandler); }
    tses::IHostString* GetImporterPrivateSettings() override {
        return GiveOut(Value().importerPrivateSettings);
    }
};

using FileNode = TwoFacedNode<orvo::File, EditFile, QueryFile>;

}  // namespace refhost
