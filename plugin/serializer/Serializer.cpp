#include "plugin/serializer/Serializer.h"

#include "host/Features.h"
#include "platform/kelappsupport/Features.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/FailureTrace.h"
#include "plugin/xml/XercesPlatform.h"

namespace tses {
Serializer::Serializer(WriterFault fault, DocumentMaker makeDocument)
    : impl_(std::make_unique<Impl>(fault, makeDocument)) {}

Serializer::~Serializer() = default;

DocumentMaker Serializer::ChosenDocumentMaker() {
    return kelappsupport::IsFeatureEnabled(features::kStreamedSave) ? MakeStreamedDocument
                                                                    : MakeDomDocument;
}

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
