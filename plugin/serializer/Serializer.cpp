#include "plugin/serializer/Serializer.h"

#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/FailureTrace.h"
#include "plugin/xml/XercesPlatform.h"

namespace tses {

Serializer::Serializer(WriterFault fault, NodeMaker makeNodes)
    : impl_(std::make_unique<Impl>(fault, makeNodes)) {}

Serializer::~Serializer() = default;

bool Serializer::Read(const std::u16string& path, HostReference<IEditSession> session) {
    return impl_->Read(path, std::move(session));
}

bool Serializer::Write(const std::u16string& path, HostReference<IQuerySession> session) {
    return impl_->Write(path, std::move(session));
}

void Serializer::StartXmlLibrary() {
    StartXerces();
}

void Serializer::StopXmlLibrary() {
    StopXerces();
}

void Serializer::TraceFailure(std::string_view category) noexcept {
    tses::TraceFailure(category);
}

}  // namespace tses
