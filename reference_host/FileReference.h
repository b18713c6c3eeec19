#pragma once

#include <string>

#include "host/Registration.h"
#include "reference_host/CountedObject.h"
#include "reference_host/HostString.h"
#include "reference_host/Ref.h"

namespace refhost {

/// Names the file of a read or write. Begins with one reference.
class FileReference final : public CountedObject<tses::IHostFileRef> {
public:
    explicit FileReference(std::u16string path)
        : path_(Ref<HostString>::Adopt(new HostString(std::move(path)))) {}

    void UnusedSlot3() override {}
    tses::IHostString* GetPath() override { return path_.Get(); }

private:
    Ref<HostString> path_;
};

}  // namespace refhost
