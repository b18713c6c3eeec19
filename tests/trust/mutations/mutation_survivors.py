"""The mistakes of mutations.py that no test can notice, with the reasons, by file, function or type, and change.
"""

SURVIVORS = {
    ("platform/kelcore/Numbers.cpp", "NarrowText",
     "if (text.size() > short_.size()) { -> if (text.size() >= short_.size()) {"):
        "A text of exactly 64 characters takes the way of the longer ones, to the same number.",
    ("platform/kelcore/Numbers.cpp", "SignificantDigits",
     "return std::count_if(digits.begin(), digits.end(), [](char digit) { return digit != '.'; }); -> "
     "return std::count_if(digits.begin(), digits.end(), [](char digit) { return digit != '/'; });"):
        "A number with as many digits as wanted is then formatted once more, with that many digits: the same text.",
    ("plugin/xml/SessionXMLDefaultHandler.cpp", "SessionXMLDefaultHandler::startElement",
     "for (XMLSize_t i = 0; i < attributes.getLength(); ++i) { -> "
     "for (XMLSize_t i = 0; i <= attributes.getLength(); ++i) {"):
        "What the library gives for the value behind the last is null, which is taken for an empty text.",
    ("platform/kelcore/Numbers.cpp", "IsVanishinglySmall",
     "int32 value = 0; -> int32 value = -1;"):
        "What comes here was read as a number, so its exponent sets it or is out of range.",
    ("plugin/elements/tracks/ReadState.h", "PendingTrack",
     "bool eqComponentPending = false;  // while the current component is the track's EQ -> "
     "bool eqComponentPending = true;  // while the current component is the track's EQ"):
        "Whatever sets the current component sets this too, and without a component it is not looked at.",
    ("platform/kelcore/Numbers.cpp", "IsVanishinglySmall",
     "return magnitude + value < 0; -> return magnitude + value <= 0;"):
        "It is asked of numbers that no type can hold alone, whose magnitudes are far from 0.",
    ("platform/kelcore/Numbers.cpp", "SignificantDigits",
     "return 1; -> return 0;"):
        "Zero has no more digits than wanted in either case.",
    ("platform/kelcore/Numbers.cpp", "WriteReal",
     "if (std::isfinite(value) && SignificantDigits({begin, end}) > digits) { -> "
     "if (std::isfinite(value) && SignificantDigits({begin, end}) >= digits) {"):
        "A number with as many digits as wanted is then formatted once more, with that many digits: the same text.",
    ("plugin/serializer/ElementTable.cpp", "ElementTable::ElementTable",
     ": entries_(std::move(entries)), places_(std::bit_ceil(kSparseness * (entries_.size() + 1))) { -> "
     ": entries_(std::move(entries)), places_(std::bit_ceil(kSparseness * (entries_.size() - 1))) {"):
        "There is room for all entries in either case.",
    ("plugin/serializer/ElementTable.cpp", "PlaceOf",
     "name.empty() ? 0 : std::uint64_t{name.front()} << 16 | std::uint64_t{name.back()}; -> "
     "name.empty() ? std::uint64_t{name.front()} << 16 | std::uint64_t{name.back()} : 0;"):
        "Entries are looked for where they were put, wherever that is; no element has an empty name.",
    ("plugin/serializer/ElementTable.cpp", "PlaceOf",
     "return (ends ^ std::uint64_t{parentState} << 32 ^ name.size() << 48) * kSpread >> 32; -> "
     "return (ends ^ std::uint64_t{parentState} << 31 ^ name.size() << 48) * kSpread >> 32;"):
        "Entries are looked for where they were put, wherever that is.",
    ("format/ValueEncoding.cpp", "ParsePlain",
     "if (!IsDigit(unit) && unit != u'.' && unit != u'-') { -> if (!IsDigit(unit) || unit != u'.' && unit != u'-') {"):
        "What the quick way leaves, the slow one reads, as the same number.",
    ("format/ValueEncoding.cpp", "ParsePlain",
     "return read.ec == std::errc() && read.ptr == end ? std::optional(value) : std::nullopt; -> "
     "return read.ec != std::errc() && read.ptr == end ? std::optional(value) : std::nullopt;"):
        "What the quick way leaves, the slow one reads, as the same number; an empty text is zero in both.",
    ("format/ValueEncoding.cpp", "ParsePlain",
     "return read.ec == std::errc() && read.ptr == end ? std::optional(value) : std::nullopt; -> "
     "return read.ec == std::errc() && read.ptr != end ? std::optional(value) : std::nullopt;"):
        "The slow way, too, takes a text as far as it is a number.",
    ("format/ValueEncoding.cpp", "ParsePlain",
     "return read.ec == std::errc() && read.ptr == end ? std::optional(value) : std::nullopt; -> "
     "return read.ec == std::errc() && read.ptr == end ? std::nullopt : std::optional(value);"):
        "The slow way, too, takes a text as far as it is a number, and one that is none for zero.",
    ("format/ValueEncoding.cpp", "kFloatPrecision",
     "constexpr int kFloatPrecision = 100; -> constexpr int kFloatPrecision = 101;"):
        "The shortest text of a number has 17 digits at most.",
    ("plugin/xml/SessionXMLDefaultHandler.cpp", "SessionXMLDefaultHandler::IsRecent",
     "constexpr std::uintptr_t kSpacing = 32;  // of blocks of memory, about -> "
     "constexpr std::uintptr_t kSpacing = 31;  // of blocks of memory, about"):
        "Which names share a place decides only how often a name is counted again.",
}
