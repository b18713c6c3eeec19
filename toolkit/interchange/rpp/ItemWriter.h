#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include <orvo/Lookup.h>
#include <orvo/Model.h>
#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/rpp/RppText.h"

namespace toolkit::interchange {

/// The value of parameter 0; 0 if there is none.
double StaticValueOf(const std::optional<orvo::Component>& control);

/// Writes clips as the items of a project.
class ItemWriter {
public:
    /// Reports clips that are in several groups. All must outlive this object.
    ItemWriter(const Export& job, RppText& text);

    /// @param place  of the clip
    void Write(const orvo::AudioClip& clip, std::uint32_t trackId, const ModelPath& place);
    void Write(const orvo::VideoClip& clip, std::uint32_t trackId, const ModelPath& place);
    void Write(const orvo::MidiClip& clip, std::uint32_t trackId, const ModelPath& place);

private:
    template <class Clip>
    void WritePlace(const Clip& clip, bool isLoop);
    template <class Clip>
    void WriteIdentity(const Clip& clip, std::uint32_t trackId);
    void WriteFades(const orvo::AudioClip& clip, const ModelPath& place);
    void WriteLevels(const orvo::AudioClip& clip, const ModelPath& place);
    void WriteStretch(const orvo::AudioClip& clip, const ModelPath& place);
    void WriteSource(std::uint32_t fileId, const ModelPath& place, bool isVideo);
    double ValueOf(const std::optional<orvo::Component>& control, const ModelPath& place) const;
    double SecondsOf(std::int64_t samples) const;

    const Export& job_;
    RppText& text_;
    orvo::SessionIndex index_;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> groups_;  // by track and clip
};

}  // namespace toolkit::interchange
