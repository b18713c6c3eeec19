#include <orvo/Draw.h>

#include "toolkit/view/Facts.h"
#include "toolkit/view/Picture.h"
#include "toolkit/view/SvgCanvas.h"

namespace orvo {

std::string DrawSvg(const Layout& layout, const std::vector<std::optional<Waveform>>& waveforms,
                    const DrawOptions& options) {
    toolkit::Scene scene(layout, waveforms, options);
    toolkit::SvgCanvas canvas;
    toolkit::Picture(scene).Draw(canvas);
    return canvas.Take({.width = scene.frame.width,
                        .height = scene.frame.height,
                        .title = options.title.empty() ? "A session" : options.title,
                        .description = toolkit::DescriptionOf(layout)});
}

}  // namespace orvo
