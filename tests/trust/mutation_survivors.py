"""The mistakes of mutations.py that no test can notice, and why: by the file, the function or type, and what is
changed to what.
"""

SURVIVORS = {
    ("platform/kelcore/Numbers.cpp", "NarrowText",
     "if (text.size() > short_.size()) { -> if (text.size() >= short_.size()) {"):
        "A text of exactly 64 characters takes the way of the longer ones, to the same number.",
    ("platform/kelcore/Numbers.cpp", "SignificantDigits",
     "return std::count_if(digits.begin(), digits.end(), [](char digit) { return digit != '.'; }); -> "
     "return std::count_if(digits.begin(), digits.end(), [](char digit) { return digit != '/'; });"):
        "A number with as many digits as wanted is then formatted once more, with that many digits: the same text.",
    ("platform/kelcore/Numbers.cpp", "IsVanishinglySmall",
     "int32 value = 0; -> int32 value = -1;"):
        "What comes here was read as a number, so its exponent sets it or is out of range.",
    ("plugin/elements/tracks/ReadState.h", "PendingTrack",
     "bool eqComponentPending = false;  // while the current component is the track's EQ -> "
     "bool eqComponentPending = true;  // while the current component is the track's EQ"):
        "Whatever sets the current component sets this too, and without a component it is not looked at.",
    ("plugin/elements/tracks/ReadState.h", "PendingTrack",
     "float radius = 0; -> float radius = 1;"):
        "What the panner of an old file says is accepted and dropped.",
}
