#include "Hosts/Linux/Proc/ShownText.h"

#include "Core/Support/Text.h"

#include <algorithm>

namespace pacelet::Linux {

namespace {

constexpr char substitute = '?';

bool isControl(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
}

} // namespace

std::string shownText(std::string_view text) {
    std::string shown{text};
    std::replace_if(shown.begin(), shown.end(), isControl, substitute);
    return repairedUTF8(std::move(shown));
}

std::string shownPath(std::string_view path) {
    return path.empty() ? std::string(1, substitute) : shownText(path);
}

std::string shownWord(std::string_view word) {
    std::string shown = shownPath(word);
    std::replace(shown.begin(), shown.end(), ' ', '_');
    return shown;
}

std::string shownArguments(std::string_view commandLine) {
    // Programs that rename themselves leave a tail of NULs behind.
    const std::size_t last = commandLine.find_last_not_of('\0');
    std::string joined{commandLine.substr(0, last == std::string_view::npos ? 0 : last + 1)};
    std::replace(joined.begin(), joined.end(), '\0', ' ');
    return shownText(joined);
}

} // namespace pacelet::Linux
