#pragma once

#include "Hosts/Recorded/Shapes.h"

#include <bit>
#include <concepts>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// Values as bytes: whole numbers in as few as they need, texts and lists behind their lengths,
/// records field by field.
namespace pacelet::Recorded::Wire {

template<typename Value>
concept Record = requires(Value& value) {
    fieldsOf(value);
};

template<typename Value>
concept Whole = std::integral<Value> || std::is_enum_v<Value>;

class Writer {
public:
    template<Whole Value>
    void put(Value& value) {
        // Small numbers stay short whatever their sign.
        const auto number = static_cast<std::int64_t>(value);
        auto rest =
            static_cast<std::uint64_t>(number) << 1 ^ static_cast<std::uint64_t>(number >> 63);
        for (; rest > 0x7F; rest >>= 7) {
            bytes += static_cast<char>(rest | 0x80);
        }
        bytes += static_cast<char>(rest);
    }
    void put(double& value) {
        const auto bits = std::bit_cast<std::uint64_t>(value);
        for (int shift = 0; shift < 64; shift += 8) {
            bytes += static_cast<char>(bits >> shift);
        }
    }
    void put(std::string& text) {
        putSize(text.size());
        bytes += text;
    }
    template<Record Value>
    void put(Value& value) {
        std::apply([&](auto&... field) { (put(field), ...); }, fieldsOf(value));
    }
    template<typename Value>
    void put(std::optional<Value>& value) {
        bool has = value.has_value();
        put(has);
        if (has) {
            put(*value);
        }
    }
    template<typename... Values>
    void put(std::variant<Values...>& value) {
        putSize(value.index());
        std::visit([&](auto& held) { put(held); }, value);
    }
    template<typename Value>
    void put(std::vector<Value>& values) {
        putSize(values.size());
        for (Value& each : values) {
            put(each);
        }
    }
    template<typename Value>
    void put(std::map<std::string, Value>& values) {
        putSize(values.size());
        for (auto& [key, value] : values) {
            std::string text = key;
            put(text);
            put(value);
        }
    }

    std::string bytes;

private:
    void putSize(std::size_t size) {
        auto number = static_cast<std::int64_t>(size);
        put(number);
    }
};

/// Each function is false when the bytes are none that a writer wrote; what was read is then
/// unspecified.
class Reader {
public:
    explicit Reader(std::string_view bytes)
        : rest_{bytes} {}

    bool atEnd() const { return rest_.empty(); }

    template<Whole Value>
    bool take(Value& value) {
        std::uint64_t bits = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            if (rest_.empty()) {
                return false;
            }
            const auto byte = static_cast<unsigned char>(rest_.front());
            rest_.remove_prefix(1);
            bits |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
            if (byte < 0x80) {
                return fit(static_cast<std::int64_t>(bits >> 1 ^ (~(bits & 1) + 1)), value);
            }
        }
        return false;
    }
    bool take(double& value) {
        if (rest_.size() < 8) {
            return false;
        }
        std::uint64_t bits = 0;
        for (int place = 7; place >= 0; --place) {
            bits = bits << 8 | static_cast<unsigned char>(rest_[static_cast<std::size_t>(place)]);
        }
        rest_.remove_prefix(8);
        value = std::bit_cast<double>(bits);
        return value - value == 0; // no infinity, and not not-a-number
    }
    bool take(std::string& text) {
        std::size_t size = 0;
        if (!takeSize(size)) {
            return false;
        }
        text = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return true;
    }
    template<Record Value>
    bool take(Value& value) {
        return std::apply([&](auto&... field) { return (take(field) && ...); }, fieldsOf(value));
    }
    template<typename Value>
    bool take(std::optional<Value>& value) {
        bool has = false;
        return take(has) && (!has || take(value.emplace()));
    }
    template<typename... Values>
    bool take(std::variant<Values...>& value) {
        std::size_t index = 0;
        return take(index) && takeAlternative(value, index, std::index_sequence_for<Values...>{});
    }
    template<typename Value>
    bool take(std::vector<Value>& values) {
        std::size_t size = 0;
        bool isWhole = takeSize(size);
        for (; isWhole && size > 0; --size) {
            isWhole = take(values.emplace_back());
        }
        return isWhole;
    }
    template<typename Value>
    bool take(std::map<std::string, Value>& values) {
        std::size_t size = 0;
        bool isWhole = takeSize(size);
        for (; isWhole && size > 0; --size) {
            std::string key;
            isWhole = take(key) && take(values[key]);
        }
        return isWhole;
    }

private:
    template<Whole Value>
    static bool fit(std::int64_t number, Value& value) {
        if constexpr (std::is_enum_v<Value>) {
            value = static_cast<Value>(number);
            return number >= 0 && number <= static_cast<std::int64_t>(lastCase(Value{}));
        } else {
            value = static_cast<Value>(number);
            return std::in_range<
                       std::conditional_t<std::is_same_v<Value, bool>, std::uint8_t, Value>>(
                       number) &&
                   (!std::is_same_v<Value, bool> || number <= 1);
        }
    }
    /// Nothing takes less than a byte, so that a length never promises more than there is.
    bool takeSize(std::size_t& size) { return take(size) && size <= rest_.size(); }

    template<typename Variant, std::size_t... places>
    bool takeAlternative(Variant& value, std::size_t index, std::index_sequence<places...>) {
        bool isWhole = false;
        ((places == index ? void(isWhole = take(value.template emplace<places>())) : void()), ...);
        return isWhole;
    }

    std::string_view rest_;
};

template<typename Value>
std::string encode(Value value) {
    Writer writer;
    writer.put(value);
    return std::move(writer.bytes);
}

/// Nothing when the bytes are not just one such value.
template<typename Value>
std::optional<Value> decode(std::string_view bytes) {
    Value value{};
    Reader reader{bytes};
    return reader.take(value) && reader.atEnd() ? std::optional{std::move(value)} : std::nullopt;
}

/// Hands every text of a value to `change`, which returns what stands in its place.
template<typename Value, typename Change>
void changeTexts(Value& value, const Change& change) {
    if constexpr (std::is_same_v<Value, std::string>) {
        value = change(value);
    } else if constexpr (Record<Value>) {
        std::apply([&](auto&... field) { (changeTexts(field, change), ...); }, fieldsOf(value));
    } else if constexpr (requires { value.has_value(); }) {
        if (value) {
            changeTexts(*value, change);
        }
    } else if constexpr (requires { value.index(); }) {
        std::visit([&](auto& held) { changeTexts(held, change); }, value);
    } else if constexpr (requires { value.find(std::string{}); }) {
        for (auto& [key, held] : value) {
            changeTexts(held, change);
        }
    } else if constexpr (requires { value.begin(); }) {
        for (auto& each : value) {
            changeTexts(each, change);
        }
    }
}

} // namespace pacelet::Recorded::Wire
