#include <map>
#include <string>
#include <vector>

#include "toolkit/diff/Comparison.h"

namespace orvo::diff {
namespace {

std::map<std::string, std::vector<std::string>> ByKey(const std::vector<Property>& properties) {
    std::map<std::string, std::vector<std::string>> values;
    for (const Property& property : properties) {
        values[property.key].push_back(property.value);
    }
    return values;
}

/// A key stands once, as a rule.
void CompareValues(const Members& members, const std::string& label,
                   const std::vector<std::string>& before, const std::vector<std::string>& after) {
    if (before.size() == 1 && after.size() == 1) {
        members.Compare(label, before[0], after[0]);
    } else {
        members.Compare(label, before, after);
    }
}

void CompareProperties(const Comparison& sessions, const Members& members) {
    const auto before = ByKey(sessions.before.properties);
    const auto after = ByKey(sessions.after.properties);
    for (const auto& [key, values] : before) {
        const auto found = after.find(key);
        if (found == after.end()) {
            members.Say(ChangeKind::Removed, ": property " + Quoted(key) + " removed");
        } else {
            CompareValues(members, "property " + Quoted(key), values, found->second);
        }
    }
    for (const auto& [key, values] : after) {
        if (!before.contains(key)) {
            members.Say(ChangeKind::Added, ": property " + Quoted(key) + " added");
        }
    }
    if (before == after && sessions.before.properties != sessions.after.properties) {
        members.Say(ChangeKind::Moved, ": properties in another order");
    }
}

}  // namespace

/// What was said of things in lists is not compared again.
void CompareSession(Comparison& sessions) {
    const Members members = sessions.MembersOf(SessionSubject());
    members.Rest("", sessions.before, sessions.after, &Session::videoTracks, &Session::audioTracks,
                 &Session::trackVisibilityPresets, &Session::clipGroups, &Session::metronome,
                 &Session::properties, &Session::files, &Session::audioDevice);
    members.Rest("metronome", sessions.before.metronome, sessions.after.metronome,
                 &Metronome::track);
    members.Rest("audio device", sessions.before.audioDevice, sessions.after.audioDevice,
                 &AudioDevice::inputPorts, &AudioDevice::outputPorts);
    CompareProperties(sessions, members);
}

}  // namespace orvo::diff
