#include <orvo/Message.h>

#include <ostream>

namespace orvo {

std::ostream& operator<<(std::ostream& out, const Message& message) {
    out << message.file;
    if (message.line != 0) {
        out << ':' << message.line << ':' << message.column;
    }
    out << (message.file.empty() ? "" : ": ") << message.what;
    return message.advice.empty() ? out : out << "; " << message.advice;
}

}  // namespace orvo
