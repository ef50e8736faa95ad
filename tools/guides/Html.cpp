#include "tools/guides/Html.h"

#include "Core/Support/Text.h"

#include <fmt/format.h>

namespace pacelet::guides {

std::string escaped(std::string_view text) {
    std::string html;
    html.reserve(text.size());
    for (const char character : repairedUTF8(std::string{text})) {
        switch (character) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\'':
            html += "&#39;";
            break;
        default:
            html += static_cast<unsigned char>(character) < ' ' || character == '\x7F' ? ' '
                                                                                       : character;
        }
    }
    return html;
}

std::string textElement(std::string_view opening, std::string_view text) {
    const std::string_view name = opening.substr(0, opening.find(' '));
    return fmt::format("<{}>{}</{}>\n", opening, escaped(text), name);
}

} // namespace pacelet::guides
