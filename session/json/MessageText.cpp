#include "session/json/MessageText.h"

#include "session/json/LoneSurrogates.h"

namespace orvo::json {

std::string Shortened(std::string text, std::size_t size) {
    if (text.size() > size) {
        while (size > 0 && !BeginsCharacter(text[size])) {
            --size;
        }
        text.replace(size, text.npos, "...");
    }
    return text;
}

std::string PointerStep(std::string_view key) {
    std::string step = "/";
    for (const char character : UnmarkedDocument(key)) {
        switch (character) {
            case '~':
                step += "~0";
                break;
            case '/':
                step += "~1";
                break;
            default:
                step += character;
        }
    }
    return step;
}

}  // namespace orvo::json
