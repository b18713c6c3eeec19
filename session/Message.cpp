#include <orvo/Message.h>

#include <ostream>

namespace orvo {

std::ostream& operator<<(std::ostream& out, const Message& message) {
    const bool hasFile = !message.file.empty();
    const bool hasPlace = message.line != 0;
    out << message.file;
    if (hasPlace) {
        out << (hasFile ? ":" : "") << message.line << ':' << message.column;
    }
    out << (hasFile || hasPlace ? ": " : "") << message.what;
    return message.advice.empty() ? out : out << "; " << message.advice;
}

}  // namespace orvo
