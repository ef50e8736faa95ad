#include "Core/Platform/HostWords.h"

#include <algorithm>
#include <array>

namespace pacelet::HostWords {

namespace {

struct Phrase {
    std::string_view onMac;
    std::string_view here;
};

/// Whole words and sentences; the first that fits is taken, so that long ones stand before short
/// ones that they begin with.
constexpr std::array linuxPhrases{
    Phrase{"kernel_task holds back other work to cool your Mac.",
           "The processor runs slower to cool your computer."},
    // The same row tells how hot the processor is; no process has a part in it here.
    Phrase{"kernel_task", "Processor heat"},
    Phrase{"Kernel (heat control)", "Slows the processor down when it is hot"},
    Phrase{"Cooling your Mac", "Cooling down"},
    Phrase{"macOS reports elevated heat", "The processor reports elevated heat"},
    Phrase{"like mds or Chrome", "like systemd or Firefox"},
    Phrase{"Low Power Mode", "Power saving"},
    Phrase{"Battery settings", "Power settings"},
    Phrase{"Login Items settings", "Startup settings"},
    // Nothing tells of what starts at login.
    Phrase{"advice. macOS will show a \"Background Items Added\" notice.", "advice."},
    Phrase{"macOS will show a \"Background Items Added\" notice. That's Pacelet, and you can turn "
           "it off here anytime.",
           "You can turn it off here anytime."},
    Phrase{"macOS will ask you to allow Pacelet to control {}.",
           "Pacelet reaches {} through an extension of its own."},
    // It is not made for this system, whose own tools show what fills the disk.
    Phrase{"Free up space with Tidyvault", "Free up space"},
    Phrase{"macOS will ask", "Your desktop will ask"},
    Phrase{"Choose Apple menu > Restart.", "Choose Restart in the menu of your desktop."},
    Phrase{"System Settings > Privacy & Security > Automation", "the settings of your desktop"},
    Phrase{"System Settings", "the settings of your desktop"},
    Phrase{"Apple's built-in test against Apple's servers",
           "its own test against mensura.cdn-apple.com, a public test server"},
    Phrase{"menu-bar item", "tray icon"},
    Phrase{"menu bar", "system tray"},
    Phrase{"in Finder", "in your file manager"},
    Phrase{"Macs", "computers"},
    Phrase{"Mac", "computer"},
    Phrase{"macOS", "Linux"},
};

/// 0xE2 begins signs such as dashes and dots in UTF-8, and no letter.
constexpr bool isWordCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '_' ||
           (static_cast<unsigned char>(character) >= 0x80 &&
            static_cast<unsigned char>(character) != 0xE2);
}

/// Whether a text may be divided between these two.
constexpr bool isSeam(char before, char after) {
    return !isWordCharacter(before) || !isWordCharacter(after);
}

bool begins(std::string_view text, std::string_view phrase) {
    return text.starts_with(phrase) &&
           (text.size() == phrase.size() || isSeam(phrase.back(), text[phrase.size()]));
}

/// Which characters a phrase may begin with: at most places of a sentence none does.
constexpr auto firstCharacters = [] {
    std::array<bool, 256> firsts{};
    for (const Phrase& phrase : linuxPhrases) {
        firsts[static_cast<unsigned char>(phrase.onMac.front())] = true;
    }
    return firsts;
}();

const Phrase* phraseAt(std::string_view sentence) {
    if (!firstCharacters[static_cast<unsigned char>(sentence.front())]) {
        return nullptr;
    }
    const auto* const found = std::ranges::find_if(
        linuxPhrases, [&](const Phrase& candidate) { return begins(sentence, candidate.onMac); });
    return found != linuxPhrases.end() ? found : nullptr;
}

} // namespace

std::string on(OperatingSystem system, std::string_view sentence) {
    if (system == OperatingSystem::macOS) {
        return std::string{sentence};
    }
    std::string result;
    result.reserve(sentence.size() + sentence.size() / 8);
    while (!sentence.empty()) {
        if (const Phrase* const phrase = phraseAt(sentence)) {
            result += phrase->here;
            sentence.remove_prefix(phrase->onMac.size());
        }
        // What follows is the rest of a word, or what divides it from the next.
        if (sentence.empty()) {
            break;
        }
        std::size_t end = 1;
        while (end < sentence.size() && !isSeam(sentence[end - 1], sentence[end])) {
            ++end;
        }
        result += sentence.substr(0, end);
        sentence.remove_prefix(end);
    }
    return result;
}

} // namespace pacelet::HostWords
