#include "reference_host/Plugin.h"

#include "host/Bases.h"
#include "reference_host/FileReference.h"
#include "reference_host/Ref.h"

namespace refhost {

// The plug-in gets the interface, not the object behind it: the pointers may differ, and the
// plug-in casts back to the interface.

Plugin::Plugin(const std::filesystem::path& library) : library_(library), name_(library.string()) {
    Initialize();
}

Plugin::~Plugin() {
    Call(tses::SessionSelector::Terminate, nullptr);
}

tses::SessionResult Plugin::Read(const std::u16string& path, tses::IEditSession& session) {
    const tses::SessionResult named = SetFilePath(path);
    return named == tses::SessionResult::Ok ? Call(tses::SessionSelector::ReadSession, &session)
                                            : named;
}

tses::SessionResult Plugin::Write(const std::u16string& path, tses::IQuerySession& session) {
    const tses::SessionResult named = SetFilePath(path);
    return named == tses::SessionResult::Ok ? Call(tses::SessionSelector::WriteSession, &session)
                                            : named;
}

void Plugin::Restart() {
    Call(tses::SessionSelector::Terminate, nullptr);
    Initialize();
}

void Plugin::ReleaseContext() {
    Call(tses::SessionSelector::Reserved, nullptr);
}

void Plugin::Initialize() {
    const auto registrar = tses::MakeOwned<tses::PlugInRegistrarBase>();
    tses::IPlugInRegistrar* const argument = registrar.get();
    const tses::SessionResult result = Call(tses::SessionSelector::Initialize, argument);
    if (result != tses::SessionResult::Ok) {
        throw PluginError(name_ + " refuses to initialise (result " +
                              std::to_string(static_cast<std::int32_t>(result)) + ")",
                          "it may need another version of the host");
    }
}

tses::SessionResult Plugin::Call(tses::SessionSelector selector, void* argument) {
    return static_cast<tses::SessionResult>(
        library_.Call(static_cast<std::int32_t>(selector), argument));
}

tses::SessionResult Plugin::SetFilePath(const std::u16string& path) {
    const auto reference = Ref<FileReference>::Adopt(new FileReference(path));
    tses::IHostFileRef* const argument = reference.Get();
    return Call(tses::SessionSelector::SetFilePath, argument);
}

}  // namespace refhost
