#pragma once

#include <map>
#include <string_view>
#include <typeindex>
#include <utility>

#include <orvo/Model.h>
#include "session/MemberKey.h"
#include "toolkit/interchange/Reporter.h"

namespace toolkit::interchange {

/// Which members of the model a format takes care of. Whatever it does not mention here is lost if
/// it is not at its default, and is reported as such, so that nothing is lost silently.
class Carried {
public:
    /// The format writes these, or reports itself what it cannot write of them.
    template <class Struct, class... Members>
    Carried& Handles(Members Struct::*... members) {
        (Set(members, {.fate = Fate::Handled}), ...);
        return *this;
    }

    /// The members of these, or of their items, have fates of their own.
    template <class Struct, class... Members>
    Carried& LooksInto(Members Struct::*... members) {
        (Set(members, {.fate = Fate::Within}), ...);
        return *this;
    }

    /// The format has nothing of this kind: counted, not listed.
    /// @param plural  what it is, such as "takes"
    template <class Struct, class Member>
    Carried& LacksByNature(Member Struct::*member, std::string_view plural) {
        Set(member, {.fate = Fate::ByNature, .plural = plural});
        return *this;
    }

    /// What is not mentioned is counted by its key, not listed: for formats that hold little.
    Carried& CountsTheRest() {
        countsTheRest_ = true;
        return *this;
    }

    enum class Fate { Lost, Handled, Within, ByNature };

    struct Entry {
        Fate fate = Fate::Lost;
        std::string_view plural{};
    };

    template <class Struct, class Member>
    Entry Of(Member Struct::*member) const {
        const auto entry = entries_.find({typeid(Struct), orvo::KeyOf(member)});
        if (entry != entries_.end()) {
            return entry->second;
        }
        return countsTheRest_ ? Entry{.fate = Fate::ByNature, .plural = orvo::KeyOf(member)}
                              : Entry();
    }

private:
    template <class Struct, class Member>
    void Set(Member Struct::*member, Entry entry) {
        entries_[{typeid(Struct), orvo::KeyOf(member)}] = entry;
    }

    std::map<std::pair<std::type_index, std::string_view>, Entry> entries_;
    bool countsTheRest_ = false;
};

/// What only editors have, such as views and selections, and where to look for the rest: what all
/// formats begin with.
Carried CarriedByAll();

/// Reports what the format does not take care of.
void ReportWhatIsNotCarried(const orvo::Session& session, const Carried& carried,
                            Reporter& reporter);

/// Whether a control changes nothing: it has no other parameter than a level, pan or mute of 0.
bool IsNeutral(const orvo::Component& control);

}  // namespace toolkit::interchange
