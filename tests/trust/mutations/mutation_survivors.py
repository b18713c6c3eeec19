"""The mistakes of mutations.py that no test can notice, with the reasons, by file, function or type, and change.
"""

SURVIVORS = {
    ("platform/kelcore/Numbers.cpp", "NarrowText",
     "if (text.size() > short_.size()) { -> if (text.size() >= short_.size()) {"):
        "A text of exactly 64 characters takes the way of the longer ones, to the same number.",
    ("platform/kelcore/Numbers.cpp", "SignificantDigits",
     "return std::count_if(digits.begin(), digits.end(), [](char digit) { return digit != '.'; }); -> "
     "return std::count_if(digits.begin(), digits.end(), [](char digit) { return digit != '/'; });"):
        "This formats a number with exactly the wanted digits a second time, with the same text.",
    ("plugin/xml/SessionXMLDefaultHandler.cpp", "SessionXMLDefaultHandler::startElement",
     "for (XMLSize_t i = 0; i < attributes.getLength(); ++i) { -> "
     "for (XMLSize_t i = 0; i <= attributes.getLength(); ++i) {"):
        "The library returns null for the value after the last, which counts as an empty text.",
    ("platform/kelcore/Numbers.cpp", "IsVanishinglySmall",
     "int32 value = 0; -> int32 value = -1;"):
        "The text is a valid number here, so its exponent sets the value or is out of range.",
    ("plugin/elements/tracks/ReadState.h", "PendingTrack",
     "bool eqComponentPending = false;  // while the current component is the track's EQ -> "
     "bool eqComponentPending = true;  // while the current component is the track's EQ"):
        "Everything that sets the current component sets this too, and without a component nothing reads it.",
    ("platform/kelcore/Numbers.cpp", "IsVanishinglySmall",
     "return magnitude + value < 0; -> return magnitude + value <= 0;"):
        "The function only gets out-of-range numbers, whose magnitudes are far from 0.",
    ("platform/kelcore/Numbers.cpp", "SignificantDigits",
     "return 1; -> return 0;"):
        "Either way, zero has no more digits than wanted.",
    ("platform/kelcore/Numbers.cpp", "WriteReal",
     "if (end - begin > digits && std::isfinite(value) && SignificantDigits({begin, end}) > digits) { -> "
     "if (end - begin > digits && std::isfinite(value) && SignificantDigits({begin, end}) >= digits) {"):
        "This formats a number with exactly the wanted digits a second time, with the same text.",
    ("platform/kelcore/Numbers.cpp", "WriteReal",
     "if (end - begin > digits && std::isfinite(value) && SignificantDigits({begin, end}) > digits) { -> "
     "if (end - begin >= digits && std::isfinite(value) && SignificantDigits({begin, end}) > digits) {"):
        "A text of exactly that length never has more digits.",
    ("platform/kelcore/Numbers.cpp", "WriteReal",
     "if (end - begin > digits && std::isfinite(value) && SignificantDigits({begin, end}) > digits) { -> "
     "if (end - begin > digits && std::isfinite(value) || SignificantDigits({begin, end}) > digits) {"):
        "A text with more digits is longer, and \"inf\" counts as one digit.",
    ("plugin/serializer/ElementTable.cpp", "ElementTable::ElementTable",
     ": entries_(std::move(entries)), places_(std::bit_ceil(kSparseness * (entries_.size() + 1))) { -> "
     ": entries_(std::move(entries)), places_(std::bit_ceil(kSparseness * (entries_.size() - 1))) {"):
        "Either way, there is room for all entries.",
    ("plugin/serializer/ElementTable.cpp", "PlaceOf",
     "name.empty() ? 0 : std::uint64_t{name.front()} << 16 | std::uint64_t{name.back()}; -> "
     "name.empty() ? std::uint64_t{name.front()} << 16 | std::uint64_t{name.back()} : 0;"):
        "Lookup and insertion use the same place, wherever that is; no element has an empty name.",
    ("plugin/serializer/ElementTable.cpp", "PlaceOf",
     "return (ends ^ std::uint64_t{parentState} << 32 ^ name.size() << 48) * kSpread >> 32; -> "
     "return (ends ^ std::uint64_t{parentState} << 31 ^ name.size() << 48) * kSpread >> 32;"):
        "Lookup and insertion use the same place, wherever that is.",
    ("format/ValueEncoding.cpp", "ParsePlain",
     "if (!IsDigit(unit) && unit != u'.' && unit != u'-') { -> if (!IsDigit(unit) || unit != u'.' && unit != u'-') {"):
        "The slow path reads everything that the fast path rejects, with the same result.",
    ("format/ValueEncoding.cpp", "ParsePlain",
     "return read.ec == std::errc() && read.ptr == end ? std::optional(value) : std::nullopt; -> "
     "return read.ec != std::errc() && read.ptr == end ? std::optional(value) : std::nullopt;"):
        "The slow path reads everything that the fast path rejects, with the same result. Both read empty texts as 0.",
    ("format/ValueEncoding.cpp", "ParsePlain",
     "return read.ec == std::errc() && read.ptr == end ? std::optional(value) : std::nullopt; -> "
     "return read.ec == std::errc() && read.ptr != end ? std::optional(value) : std::nullopt;"):
        "The slow path also reads the leading number of a text.",
    ("format/ValueEncoding.cpp", "ParsePlain",
     "return read.ec == std::errc() && read.ptr == end ? std::optional(value) : std::nullopt; -> "
     "return read.ec == std::errc() && read.ptr == end ? std::nullopt : std::optional(value);"):
        "The slow path also reads the leading number of a text, and anything else as zero.",
    ("format/ValueEncoding.cpp", "kFloatPrecision",
     "constexpr int kFloatPrecision = 100; -> constexpr int kFloatPrecision = 101;"):
        "The shortest text of a number has at most 17 digits.",
    ("plugin/xml/SessionXMLDefaultHandler.cpp", "SessionXMLDefaultHandler::IsRecent",
     "constexpr std::uintptr_t kSpacing = 32;  // about the distance between blocks of memory -> "
     "constexpr std::uintptr_t kSpacing = 31;  // about the distance between blocks of memory"):
        "The place affects only how often a name is counted again.",
}
