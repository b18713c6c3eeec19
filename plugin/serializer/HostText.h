#pragma once

#include <string>

#include "format/InlineText.h"
#include "plugin/serializer/HostReference.h"

namespace tses {

/// Returns the text of a host string that a call returned; empty for null and for a string without
/// data. If the string claims to be longer than any text may be, throws a `std::length_error` that
/// says so and fails the request, without touching the data.
InlineText TextOf(IHostString* returned);

/// A host string of the plug-in's own, for the host operations that take one.
HostReference<IHostString> MakeHostString(std::u16string text);

}  // namespace tses
