#pragma once

#include <vector>

#include <orvo/Redact.h>
#include "toolkit/edit/EditedDocument.h"
#include "toolkit/redact/Pseudonyms.h"

namespace toolkit {

/// What changes the document of a session into a redacted one.
std::vector<orvo::Replacement> RedactDocument(const EditedDocument& document,
                                              const orvo::RedactOptions& options,
                                              Pseudonyms& pseudonyms);

}  // namespace toolkit
