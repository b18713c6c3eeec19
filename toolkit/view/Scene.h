#pragma once

#include <optional>
#include <vector>

#include <orvo/Draw.h>
#include "toolkit/view/Colours.h"
#include "toolkit/view/Frame.h"
#include "toolkit/view/Palette.h"

namespace toolkit {

/// What is drawn, and how. Refers to its arguments.
struct Scene {
    Scene(const orvo::Layout& shownLayout,
          const std::vector<std::optional<orvo::Waveform>>& shownWaveforms,
          const orvo::DrawOptions& drawOptions)
        : layout(shownLayout),
          waveforms(shownWaveforms),
          options(drawOptions),
          colours(ColoursOf(drawOptions.theme)),
          frame(shownLayout, drawOptions),
          palette(drawOptions.theme) {}

    /// Null: none.
    const orvo::Waveform* WaveformOf(const orvo::LayoutBox& box) const {
        return box.media && *box.media < waveforms.size() && waveforms[*box.media]
                   ? &*waveforms[*box.media]
                   : nullptr;
    }

    const orvo::Layout& layout;
    const std::vector<std::optional<orvo::Waveform>>& waveforms;
    const orvo::DrawOptions& options;
    const ThemeColours& colours;
    Frame frame;
    Palette palette;
};

}  // namespace toolkit
