#pragma once

#include <string>

#include "plugin/serializer/HostReference.h"

namespace tses {

/// The text of a host string that a call returned; empty for null, and for a string without data.
/// One that claims to be longer than any text is not looked at: a `std::length_error` that says so
/// fails the request.
std::u16string TextOf(IHostString* returned);

/// A host string of the plug-in's own, for the host operations that take one.
HostReference<IHostString> MakeHostString(std::u16string text);

}  // namespace tses
