#include "Hosts/Linux/X11/Displays.h"

#include <unordered_map>
#include <xcb/randr.h>

namespace pacelet::Linux::X11 {

namespace {

using WidthOfMode = std::unordered_map<xcb_randr_mode_t, std::int64_t>;

WidthOfMode widthsOfModes(const xcb_randr_get_screen_resources_current_reply_t& resources) {
    WidthOfMode widths;
    const xcb_randr_mode_info_t* modes = xcb_randr_get_screen_resources_current_modes(&resources);
    const int count = xcb_randr_get_screen_resources_current_modes_length(&resources);
    for (int at = 0; at < count; ++at) {
        widths[modes[at].id] = modes[at].width;
    }
    return widths;
}

std::vector<std::int64_t> outputWidths(const Connection& connection, xcb_randr_output_t output,
                                       xcb_timestamp_t time, const WidthOfMode& widthOfMode) {
    std::vector<std::int64_t> widths;
    const auto info =
        replyTo(connection.get(), xcb_randr_get_output_info(connection.get(), output, time),
                xcb_randr_get_output_info_reply);
    if (info == nullptr) {
        return widths;
    }
    const xcb_randr_mode_t* modes = xcb_randr_get_output_info_modes(info.get());
    const int count = xcb_randr_get_output_info_modes_length(info.get());
    for (int at = 0; at < count; ++at) {
        if (const auto width = widthOfMode.find(modes[at]); width != widthOfMode.end()) {
            widths.push_back(width->second);
        }
    }
    return widths;
}

} // namespace

std::optional<std::vector<Display>> readDisplays(const Connection& connection) {
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_randr_id);
    if (extension == nullptr || extension->present == 0) {
        return std::nullopt;
    }
    const auto resources =
        replyTo(connection.get(),
                xcb_randr_get_screen_resources_current(connection.get(), connection.root()),
                xcb_randr_get_screen_resources_current_reply);
    if (resources == nullptr) {
        return std::nullopt;
    }
    const WidthOfMode widthOfMode = widthsOfModes(*resources);
    const xcb_timestamp_t time = resources->config_timestamp;
    const xcb_randr_crtc_t* crtcs = xcb_randr_get_screen_resources_current_crtcs(resources.get());
    const int count = xcb_randr_get_screen_resources_current_crtcs_length(resources.get());
    std::vector<Display> displays;
    for (int at = 0; at < count; ++at) {
        const auto info =
            replyTo(connection.get(), xcb_randr_get_crtc_info(connection.get(), crtcs[at], time),
                    xcb_randr_get_crtc_info_reply);
        const auto current = info != nullptr ? widthOfMode.find(info->mode) : widthOfMode.end();
        if (current == widthOfMode.end() ||
            xcb_randr_get_crtc_info_outputs_length(info.get()) == 0) {
            continue;
        }
        const xcb_randr_output_t output = *xcb_randr_get_crtc_info_outputs(info.get());
        displays.push_back(
            {crtcs[at], current->second, outputWidths(connection, output, time, widthOfMode)});
    }
    return displays;
}

} // namespace pacelet::Linux::X11
