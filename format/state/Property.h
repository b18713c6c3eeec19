#pragma once

#include <string>

#include "format/Names.h"
#include "format/Rows.h"

// Texts that the host keeps with the session, by key:
//
//     <properties> <property key="artist">...</property> ... </properties>

namespace tses {

struct PropertyRecord {
    std::u16string key{};
};

inline constexpr auto kPropertyRows = Rows(Text<&PropertyRecord::key>(names::key));

}  // namespace tses
