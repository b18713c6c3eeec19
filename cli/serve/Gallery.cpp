#include "cli/serve/Gallery.h"

#include <fmt/format.h>

#include <sstream>

#include "cli/terminal/Messages.h"

namespace cli {
namespace {

std::string AsMarkup(std::string_view text) {
    std::string out;
    for (const char character : Printable(text)) {
        switch (character) {
            case '<':
                out += "&lt;";
                break;
            case '&':
                out += "&amp;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += character;
        }
    }
    return out;
}

/// @param head  what else is in the head
std::string PageOf(const std::string& title, const std::string& body,
                   const std::string& head = {}) {
    return fmt::format(
        R"(<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="dark light">
<title>{0}</title>
<link rel="icon" href="data:,">
<link rel="stylesheet" href="gallery.css">
{2}</head>
<body>
<main>
<h1>{0}</h1>
{1}</main>
</body>
</html>
)",
        AsMarkup(title), body, head);
}

std::string CardOf(const std::string& session) {
    return fmt::format(
        R"html(<li><a href="session?file={0}"><picture>
<source media="(prefers-color-scheme: dark)" srcset="picture?theme=dark&amp;file={0}">
<img src="picture?file={0}" alt="" width="560" height="220" loading="lazy">
</picture><span>{1}</span></a></li>
)html",
        AsAddress(session), AsMarkup(session));
}

}  // namespace

const std::string_view kGalleryStyle = R"(:root {
    color-scheme: light dark;
    --ground: #f4f4f1;
    --card: #ffffff;
    --line: #dcdcd6;
    --text: #1f2329;
    --accent: #a15c00;
    font: 14px/20px system-ui, -apple-system, "Segoe UI", Roboto, "Noto Sans", sans-serif;
}

@media (prefers-color-scheme: dark) {
    :root {
        --ground: #14161a;
        --card: #1d2127;
        --line: #2e343d;
        --text: #e8eaee;
        --accent: #f2b04c;
    }
}

body {
    margin: 0;
    background: var(--ground);
    color: var(--text);
}

main {
    max-width: 1280px;
    margin: 0 auto;
    padding: 32px 24px;
}

h1 {
    margin: 0 0 24px;
    font-size: 20px;
    overflow-wrap: anywhere;
}

ul {
    display: grid;
    gap: 24px;
    margin: 0;
    padding: 0;
    grid-template-columns: repeat(auto-fill, minmax(min(360px, 100%), 1fr));
    list-style: none;
}

a {
    display: block;
    overflow: hidden;
    border: 1px solid var(--line);
    border-radius: 12px;
    background: var(--card);
    color: inherit;
    text-decoration: none;
}

a:hover,
a:focus-visible {
    border-color: var(--accent);
    outline: 2px solid var(--accent);
}

img {
    display: block;
    width: 100%;
    height: auto;
}

span {
    display: block;
    padding: 8px 16px 12px;
    border-top: 1px solid var(--line);
    overflow-wrap: anywhere;
}

pre {
    white-space: pre-wrap;
}
)";

std::string AsAddress(std::string_view text) {
    std::string out;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= 'a' && byte <= 'z') || byte == '-' || byte == '.' ||
                             byte == '_';
        if (isPlain) {
            out += character;
        } else {
            fmt::format_to(std::back_inserter(out), "%{:02X}", static_cast<unsigned>(byte));
        }
    }
    return out;
}

std::string GalleryOf(const std::string& folder, const std::vector<std::string>& sessions) {
    std::string cards;
    for (const std::string& session : sessions) {
        cards += CardOf(session);
    }
    return PageOf(folder, sessions.empty() ? "<p>There are no sessions in this folder.</p>\n"
                                           : "<ul>\n" + cards + "</ul>\n");
}

std::string ExcuseOf(const std::string& session, const std::string& reasons) {
    std::string lines;
    std::istringstream rest(reasons);
    for (std::string line; std::getline(rest, line);) {
        lines += AsMarkup(line) + "\n";
    }
    // A file that is being saved can be read a moment later.
    return PageOf(session, "<p>This session cannot be shown.</p>\n<pre>" + lines + "</pre>\n",
                  "<meta http-equiv=\"refresh\" content=\"2\">\n");
}

}  // namespace cli
