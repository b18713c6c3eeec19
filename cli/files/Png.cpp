#include "cli/files/Png.h"

#include <librsvg/rsvg.h>

#include <memory>
#include <stdexcept>

namespace cli {
namespace {

using Document = std::unique_ptr<RsvgHandle, decltype(&g_object_unref)>;
using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

[[noreturn]] void Fail(const std::string& reason) {
    throw std::runtime_error("the picture cannot be drawn: " + reason);
}

Document Load(const std::string& svg) {
    GError* error = nullptr;
    GInputStream* const stream =
        g_memory_input_stream_new_from_data(svg.data(), static_cast<gssize>(svg.size()), nullptr);
    // A long session is a long document.
    Document document(rsvg_handle_new_from_stream_sync(stream, nullptr, RSVG_HANDLE_FLAG_UNLIMITED,
                                                       nullptr, &error),
                      &g_object_unref);
    g_object_unref(stream);
    if (!document) {
        const std::string reason = error->message;
        g_error_free(error);
        Fail(reason);
    }
    return document;
}

cairo_status_t Append(void* file, const unsigned char* data, unsigned size) {
    static_cast<std::string*>(file)->append(reinterpret_cast<const char*>(data), size);
    return CAIRO_STATUS_SUCCESS;
}

void Require(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) {
        Fail(cairo_status_to_string(status));
    }
}

}  // namespace

std::string DrawPng(const std::string& svg, double scale) {
    const Document document = Load(svg);
    double width = 0;
    double height = 0;
    rsvg_handle_get_intrinsic_size_in_pixels(document.get(), &width, &height);
    const RsvgRectangle whole = {0, 0, width * scale, height * scale};
    const Surface surface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(whole.width),
                                   static_cast<int>(whole.height)),
        &cairo_surface_destroy);
    Require(cairo_surface_status(surface.get()));
    const Context context(cairo_create(surface.get()), &cairo_destroy);
    GError* error = nullptr;
    if (rsvg_handle_render_document(document.get(), context.get(), &whole, &error) == FALSE) {
        const std::string reason = error->message;
        g_error_free(error);
        Fail(reason);
    }
    std::string file;
    Require(cairo_surface_write_to_png_stream(surface.get(), Append, &file));
    return file;
}

}  // namespace cli
