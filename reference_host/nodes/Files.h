#pragma once

#include "host/Files.h"
#include "reference_host/Node.h"
#include "reference_host/model/File.h"

namespace refhost {

class EditFile final : public Face<tses::IEditFile, model::File> {
public:
    using Face::Face;

    void SetPath(const kelcore::char16* path) override { Value().path = path; }
    void SetRecoveryId(const kelcore::char16* recoveryId) override {
        Value().recoveryId = recoveryId;
    }
    void SetMediaHandler(const kelcore::char16* handlerId) override {
        Value().mediaHandler = handlerId;
    }
    void SetImporterPrivateSettings(const kelcore::char16* settings) override {
        Value().importerPrivateSettings = settings;
    }
};

class QueryFile final : public Face<tses::IQueryFile, model::File> {
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

using FileNode = TwoFacedNode<model::File, EditFile, QueryFile>;

}  // namespace refhost
