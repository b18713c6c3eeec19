#include "reference_host/nodes/Session.h"

namespace refhost {
namespace {

FileNode& FileAt(DataNode<model::Session>& session, std::size_t index) {
    return session.ElementNode<FileNode, &model::Session::files>(index);
}

}  // namespace

tses::IEditFile* EditSession::GetFile(kelcore::uint32 id) {
    return id == kNoId ? nullptr : &FileAt(Owner(), files_.FindOrAdd(Value().files, id)).Edit();
}

tses::IQueryFile* QuerySession::GetFile(kelcore::uint32 index) {
    return index < Value().files.size() ? &FileAt(Owner(), index).Query() : nullptr;
}

}  // namespace refhost
