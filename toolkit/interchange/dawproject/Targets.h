#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include <orvo/Interchange.h>
#include <orvo/Model.h>
#include "toolkit/interchange/dawproject/ProjectDocument.h"

namespace toolkit::interchange::dawproject {

/// What the value of a parameter is.
enum class ValueKind {
    Level,   ///< of a fader, gain or send
    Pan,     ///< from left to right
    Switch,  ///< off or on
    Raw      ///< of an effect, in the parameter's own unit
};

/// How values of the document become values of a session.
struct ValueScale {
    ValueKind kind = ValueKind::Raw;
    std::string unit{};
    double minimum = 0;
    double maximum = 1;
    orvo::LevelUnit levels = orvo::LevelUnit::Decibels;

    float ValueOf(double value) const;

    /// Whether a straight line of values is a straight line in the session.
    bool IsStraight() const { return kind != ValueKind::Level || unit == "decibel"; }
};

/// The scale of a parameter's element. A unit that does not fit is reported.
ValueScale ScaleOf(const ProjectDocument& document, const pugi::xml_node& parameter,
                   ValueKind kind);

/// A parameter that lanes may move.
struct Target {
    orvo::Parameter* parameter = nullptr;  ///< stays where it is while tracks move
    ValueScale scale{};
};

/// All of them, by the ids of their elements.
using Targets = std::unordered_map<std::string, Target>;

}  // namespace toolkit::interchange::dawproject
