#include "plugin/entry/SessionNativeInterface.h"

#include <new>

#include "platform/kelcore/Localizer.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Trace.h"
#include "platform/kelui/ResourceManager.h"
#include "plugin/serializer/HostText.h"

namespace tses {
namespace {

constexpr char kGuid[] = "7A1C9E52-3B6D-4f08-A2E4-5D93C07B1F68";
constexpr std::string_view kDisplayNameKey =
    "$$$/TembraSessionPlugIns/OrvoNative/PlugInName=Tembra Orvo plug-in";
constexpr std::string_view kFormatNameKey =
    "$$$/TembraSessionPlugIns/OrvoNative/FormatNameOrvoNative=Tembra Session";
constexpr std::string_view kExtension = "orvo";
constexpr std::string_view kTerminated = "the plug-in was terminated: initialise it first";

void InstallResourceManager() {
    const void* const ownFunction = reinterpret_cast<const void*>(&ModuleHostService);
    kelui::InstallPlugInResourceManager(
        std::make_unique<kelui::OS_ResourceManager>(kelui::ModuleOfAddress(ownFunction)));
}

void RegisterFormat(IPlugInRegistrar& registrar) {
    const std::u16string formatName = kelcore::Localizer::Lookup(kFormatNameKey);
    const std::u16string extension = kelcore::AsciiToUTF16(kExtension);
    const kelcore::char16* const extensions[] = {extension.c_str()};
    registrar.RegisterOpenFormat(formatName.c_str(), extensions, 1);
    registrar.RegisterSaveFormat(formatName.c_str(), extensions, 1);
}

/// Returns null if memory runs out; the plug-in then reads and writes nothing.
std::unique_ptr<Serializer> MakeSerializer() {
    try {
        return std::make_unique<Serializer>();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

HostReference<IHostObject>& ModuleHostService() {
    static HostReference<IHostObject> service;
    return service;
}

SessionResult SessionNativeInterface::Initialize(IPlugInRegistrar* registrar) {
    initialised_ = true;
    InstallResourceManager();
    Serializer::StartXmlLibrary();
    const std::u16string displayName = kelcore::Localizer::Lookup(kDisplayNameKey);
    registrar->SetPlugInIdentity(kGuid, displayName.c_str());
    registrar->DeclareInterfaceVersion(kInterfaceMajor, kInterfaceMinor);
    RegisterFormat(*registrar);
    serializer_ = MakeSerializer();
    terminated_ = false;
    return SessionResult::Ok;
}

SessionResult SessionNativeInterface::Terminate() {
    terminated_ = true;
    if (!initialised_) {
        return SessionResult::Ok;
    }
    initialised_ = false;
    ModuleHostService().Reset();
    kelui::InstallPlugInResourceManager(nullptr);
    // The serializer holds objects of the XML library, so it must go before the library stops.
    serializer_.reset();
    Serializer::StopXmlLibrary();
    return SessionResult::Ok;
}

SessionResult SessionNativeInterface::SetFilePath(IHostFileRef* fileRef) {
    filePath_.clear();
    filePath_ = TextOf(fileRef->GetPath());
    return SessionResult::Ok;
}

SessionResult SessionNativeInterface::ReadSession(IEditSession* session) {
    if (terminated_) {
        kelcore::trace::Write(kelcore::trace::kReaderCategory, kTerminated);
        return SessionResult::ReadFailed;
    }
    if (!serializer_) {
        return SessionResult::Ok;
    }
    return serializer_->Read(filePath_, Retain(session)) ? SessionResult::Ok
                                                         : SessionResult::ReadFailed;
}

SessionResult SessionNativeInterface::WriteSession(IQuerySession* session) {
    if (terminated_) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory, kTerminated);
        return SessionResult::WriteFailed;
    }
    if (!serializer_) {
        return SessionResult::Ok;
    }
    return serializer_->Write(filePath_, Retain(session)) ? SessionResult::Ok
                                                          : SessionResult::WriteFailed;
}

}  // namespace tses
