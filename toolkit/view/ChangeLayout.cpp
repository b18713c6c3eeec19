#include <orvo/Diff.h>
#include <orvo/Layout.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "session/MemberKey.h"

namespace orvo {
namespace {

/// What became of the things of a session, by their paths in its JSON.
using Marks = std::unordered_map<std::string, LayoutChange>;

LayoutChange MarkOf(ChangeKind kind) {
    switch (kind) {
        case ChangeKind::Added:
            return LayoutChange::Added;
        case ChangeKind::Removed:
            return LayoutChange::Removed;
        case ChangeKind::Moved:
        case ChangeKind::Trimmed:
        case ChangeKind::Split:
            return LayoutChange::Moved;
        default:
            return LayoutChange::Changed;
    }
}

/// Of several changes of a thing, that of its place counts.
void Mark(Marks& marks, const std::vector<std::string>& paths, LayoutChange change) {
    for (const std::string& path : paths) {
        const auto [mark, isNew] = marks.try_emplace(path, change);
        if (!isNew && change != LayoutChange::Changed) {
            mark->second = change;
        }
    }
}

std::string_view KeyOfClips(BoxKind kind) {
    switch (kind) {
        case BoxKind::Video:
            return KeyOf(&VideoTrack::clips);
        case BoxKind::Audio:
            return KeyOf(&AudioTrack::clips);
        case BoxKind::Midi:
            return KeyOf(&AudioTrack::midiClips);
    }
    return {};
}

/// @param row  the path of the box's row
std::string PathOf(const std::string& row, const LayoutBox& box) {
    return row + "/" + std::string(KeyOfClips(box.kind)) + "/" + std::to_string(box.index);
}

LayoutChange FindMark(const Marks& marks, const std::string& path) {
    const auto mark = marks.find(path);
    return mark != marks.end() ? mark->second : LayoutChange::Same;
}

void MarkAll(Layout& layout, const Marks& marks) {
    for (LayoutRow& row : layout.rows) {
        row.change = FindMark(marks, row.path);
        for (LayoutBox& box : row.boxes) {
            box.change = row.change == LayoutChange::Added || row.change == LayoutChange::Removed
                             ? *row.change
                             : FindMark(marks, PathOf(row.path, box));
        }
    }
}

/// Which path of the second session a track of the first one has.
std::map<std::string, std::string> MatchPaths(const Session& before, const Session& after) {
    const SessionMatch match = MatchSessions(before, after);
    std::map<std::string, std::string> paths;
    const auto add = [&paths](std::string_view key, const ListMatch& list, std::size_t count) {
        for (const auto& [first, second] : list.same) {
            // The metronome's track, behind the last one, is at the same place in both.
            if (first < count) {
                const std::string folder = "/" + std::string(key) + "/";
                paths.emplace(folder + std::to_string(first), folder + std::to_string(second));
            }
        }
    };
    add(KeyOf(&Session::videoTracks), match.videoTracks, before.videoTracks.size());
    add(KeyOf(&Session::audioTracks), match.audioTracks, before.audioTracks.size());
    return paths;
}

/// Takes over what the first session has besides.
class Remains {
public:
    Remains(Layout& before, Layout& after) : after_(after) {
        for (LayoutMedia& media : before.media) {
            const auto same = std::ranges::find(after.media, media.path, &LayoutMedia::path);
            media_.push_back(static_cast<std::size_t>(same - after.media.begin()));
            if (same == after.media.end()) {
                after.media.push_back(std::move(media));
            }
        }
        curveBase_ = after.curves.size();
        groupBase_ = after.groups.size();
        const auto append = [](auto& from, auto& to) {
            to.insert(to.end(), std::make_move_iterator(from.begin()),
                      std::make_move_iterator(from.end()));
        };
        append(before.curves, after.curves);
        append(before.groups, after.groups);
    }

    void Add(LayoutRow& row, const std::map<std::string, std::string>& paths) {
        const auto path = paths.find(row.path);
        const auto same = std::ranges::find(
            after_.rows, path != paths.end() ? path->second : row.path, &LayoutRow::path);
        if (row.change == LayoutChange::Removed || same == after_.rows.end()) {
            AddWhole(row);
            return;
        }
        std::vector<LayoutBox> boxes;
        for (LayoutBox& box : row.boxes) {
            if (box.change == LayoutChange::Removed || box.change == LayoutChange::Moved) {
                box.change = box.change == LayoutChange::Moved ? LayoutChange::Former : *box.change;
                boxes.push_back(Taken(box));
            }
        }
        // They stand behind the others, whose indices grow.
        for (LayoutBox& box : same->boxes) {
            if (box.crossfadesInto) {
                *box.crossfadesInto += boxes.size();
            }
        }
        same->boxes.insert(same->boxes.begin(), std::make_move_iterator(boxes.begin()),
                           std::make_move_iterator(boxes.end()));
    }

private:
    void AddWhole(LayoutRow& row) {
        for (LayoutBox& box : row.boxes) {
            box = Taken(box);
        }
        after_.rows.push_back(std::move(row));
    }

    LayoutBox Taken(LayoutBox& box) const {
        LayoutBox taken = std::move(box);
        taken.crossfadesInto.reset();
        if (taken.media) {
            *taken.media = media_[*taken.media];
        }
        if (taken.group) {
            *taken.group += groupBase_;
        }
        for (auto* const fade : {&taken.fadeIn, &taken.fadeOut}) {
            if (*fade) {
                (*fade)->curve += curveBase_;
            }
        }
        return taken;
    }

    Layout& after_;
    std::vector<std::size_t> media_;  // where those of the first session are in the second one
    std::size_t curveBase_ = 0;
    std::size_t groupBase_ = 0;
};

/// Where the things of both sessions are in their layout, by their paths.
class Places {
public:
    /// @param paths  which path of the second session a track of the first one has
    Places(const Layout& layout, const std::map<std::string, std::string>& paths) {
        std::map<std::string_view, std::string_view> former;
        for (const auto& [before, after] : paths) {
            former.emplace(after, before);
        }
        for (std::size_t row = 0; row < layout.rows.size(); ++row) {
            const auto path = former.find(layout.rows[row].path);
            AddRow(layout.rows[row], row,
                   path != former.end() ? std::string(path->second) : layout.rows[row].path);
        }
    }

    /// Finds the first thing of a change, in the second session if it is still there.
    LayoutNote NoteOf(const Change& change) const {
        LayoutNote note{.sentence = change.sentence};
        if (!Find(after_, change.after, note)) {
            Find(before_, change.before, note);
        }
        return note;
    }

private:
    struct Place {
        std::size_t row;
        std::optional<std::size_t> box;
    };
    using Index = std::unordered_map<std::string, Place>;

    static bool IsGone(const std::optional<LayoutChange>& change) {
        return change == LayoutChange::Removed || change == LayoutChange::Former;
    }

    /// @param former  the path of the row in the first session
    void AddRow(const LayoutRow& row, std::size_t number, const std::string& former) {
        (IsGone(row.change) ? before_ : after_).try_emplace(row.path, Place{number, {}});
        for (std::size_t i = 0; i < row.boxes.size(); ++i) {
            const LayoutBox& box = row.boxes[i];
            if (IsGone(box.change)) {
                before_.try_emplace(PathOf(former, box), Place{number, i});
            } else {
                after_.try_emplace(PathOf(row.path, box), Place{number, i});
            }
        }
    }

    static bool Find(const Index& index, const std::vector<std::string>& paths, LayoutNote& note) {
        for (const std::string& path : paths) {
            if (const auto place = index.find(path); place != index.end()) {
                note.row = place->second.row;
                note.box = place->second.box;
                return true;
            }
        }
        return false;
    }

    Index before_;
    Index after_;
};

}  // namespace

Layout MakeChangeLayout(const Session& before, const Session& after, const LayoutOptions& options) {
    Layout layout = MakeLayout(after, options);
    Layout former = MakeLayout(before, options);
    if (!options.from) {
        layout.from = std::min(layout.from, former.from);
    }
    if (!options.to) {
        layout.to = std::max(layout.to, former.to);
    }
    Marks marksBefore;
    Marks marksAfter;
    const std::vector<Change> changes = FindChanges(before, after);
    for (const Change& change : changes) {
        Mark(marksBefore, change.before, MarkOf(change.kind));
        Mark(marksAfter, change.after, MarkOf(change.kind));
    }
    MarkAll(former, marksBefore);
    MarkAll(layout, marksAfter);
    const std::map<std::string, std::string> paths = MatchPaths(before, after);
    Remains remains(former, layout);
    for (LayoutRow& row : former.rows) {
        remains.Add(row, paths);
    }
    const Places places(layout, paths);
    for (const Change& change : changes) {
        layout.notes.push_back(places.NoteOf(change));
    }
    return layout;
}

}  // namespace orvo
