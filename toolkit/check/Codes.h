#pragma once

#include <orvo/Check.h>

namespace toolkit {

/// The kinds of findings.
enum class Code {
    Unreadable,
    NotWellFormed,
    NotASession,
    WrongJson,
    MissingId,
    DuplicateId,
    UnknownElement,
    MisplacedElement,
    RepeatedElement,
    IgnoredElement,
    StrayText,
    UnknownAttribute,
    MisplacedAttribute,
    RepeatedAttribute,
    IgnoredAttribute,
    WrongValue,
    BadBase64,
    NotSaved,
    SampleRate,
    NegativeLength,
    UnknownFile,
    MissingMedia,
    UnreadableMedia,
    ShortMedia,
    MediaRate,
    MediaChannels,
    CrossfadeAbsent,
    CrossfadeApart,
    GroupMemberAbsent,
    OutputAbsent,
    SendAbsent,
    SideChainAbsent,
    RoutingLoop,
    KeyframeOrder,
    ClipPastEnd,
};

const orvo::CheckCode& Describe(Code code);

}  // namespace toolkit
