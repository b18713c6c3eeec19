#include "reference_host/Registrar.h"

namespace refhost {
namespace {

Registrar::Format MakeFormat(const kelcore::char16* name, const kelcore::char16* const* extensions,
                             kelcore::int32 extensionCount) {
    return {name, {extensions, extensions + extensionCount}};
}

}  // namespace

void Registrar::DeclareInterfaceVersion(kelcore::int32 a, kelcore::int32 b) {
    interfaceVersions_.push_back({a, b});
}

void Registrar::SetPlugInIdentity(const char* guid, const kelcore::char16* displayName) {
    identities_.push_back({guid, displayName});
}

void Registrar::RegisterOpenFormat(const kelcore::char16* formatName,
                                   const kelcore::char16* const* extensions,
                                   kelcore::int32 extensionCount) {
    openFormats_.push_back(MakeFormat(formatName, extensions, extensionCount));
}

void Registrar::RegisterSaveFormat(const kelcore::char16* formatName,
                                   const kelcore::char16* const* extensions,
                                   kelcore::int32 extensionCount) {
    saveFormats_.push_back(MakeFormat(formatName, extensions, extensionCount));
}

}  // namespace refhost
