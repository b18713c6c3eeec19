#include <orvo/Draw.h>

#include "toolkit/view/Facts.h"
#include "toolkit/view/Picture.h"

namespace orvo {

PictureHead HeadOf(const Layout& layout, const DrawOptions& options) {
    const toolkit::Frame frame(layout, options);
    return {.width = frame.width,
            .height = frame.height,
            .title = options.title.empty() ? "A session" : options.title,
            .description = toolkit::DescriptionOf(layout)};
}

void Draw(Canvas& canvas, const Layout& layout,
          const std::vector<std::optional<Waveform>>& waveforms, const DrawOptions& options) {
    toolkit::Scene scene(layout, waveforms, options);
    toolkit::Picture(scene).Draw(canvas);
}

std::string DrawSvg(const Layout& layout, const std::vector<std::optional<Waveform>>& waveforms,
                    const DrawOptions& options) {
    SvgCanvas canvas;
    Draw(canvas, layout, waveforms, options);
    return canvas.Take(HeadOf(layout, options));
}

}  // namespace orvo
