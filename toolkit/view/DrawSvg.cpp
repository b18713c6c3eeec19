#include <orvo/Draw.h>

#include "toolkit/view/Picture.h"
#include "toolkit/view/SvgCanvas.h"

namespace orvo {

std::string DrawSvg(const Layout& layout, const std::vector<std::optional<Waveform>>& waveforms,
                    const DrawOptions& options) {
    const toolkit::Picture picture(layout, waveforms, options);
    toolkit::SvgCanvas canvas(picture.Width(), picture.Height(), picture.Title(),
                              picture.Description());
    picture.Draw(canvas);
    return canvas.Take();
}

}  // namespace orvo
