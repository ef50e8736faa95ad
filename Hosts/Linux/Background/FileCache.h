#pragma once

#include "Core/Support/Files.h"
#include "Hosts/Linux/Apps/TimeOfChange.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace pacelet::Linux {

/// What was made of small text files, made anew only when a file has changed. One round asks for
/// every file that matters; what a round did not ask for is forgotten.
template<typename Value>
class FileCache {
public:
    /// What `make(text)` made of the file; null when it is no regular file or cannot be read. Lives
    /// until the end of the next round.
    template<typename Maker>
    const Value* get(const std::string& path, Maker&& make) {
        if (const auto seen = seen_.find(path); seen != seen_.end()) {
            return valueOf(seen->second);
        }
        Held held{timeOfChange(path), std::nullopt};
        const auto known = held_.find(path);
        if (known != held_.end() && known->second.changed == held.changed) {
            held = std::move(known->second);
        } else if (held.changed && !readFile(path, largestFile, text_)) {
            held.value = make(text_);
        }
        return valueOf(seen_.emplace(path, std::move(held)).first->second);
    }

    void endRound() {
        held_ = std::move(seen_);
        seen_.clear();
    }

private:
    static constexpr std::size_t largestFile = std::size_t{1} << 20;

    struct Held {
        std::optional<std::int64_t> changed;
        std::optional<Value> value;
    };

    static const Value* valueOf(const Held& held) { return held.value ? &*held.value : nullptr; }

    std::unordered_map<std::string, Held> held_; ///< by path, from the last round
    std::unordered_map<std::string, Held> seen_;
    std::string text_;
};

} // namespace pacelet::Linux
