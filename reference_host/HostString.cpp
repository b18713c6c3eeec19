#include "reference_host/HostString.h"

#include "reference_host/Ref.h"

namespace refhost {

std::u16string TextOf(tses::IHostString* string) {
    const auto held = Ref<tses::IHostString>::Retain(string);
    if (!held || held->GetLength() == 0) {
        return {};
    }
    return std::u16string(held->GetData(), held->GetLength());
}

}  // namespace refhost
