#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <simdjson.h>
#include <string_view>

namespace pacelet {

/// The numbers of one JSON object.
class JsonNumbers {
public:
    /// Nothing unless `json` is one valid JSON document whose top level is an object. A number that
    /// no finite float holds reads as none.
    static std::optional<JsonNumbers> read(std::string_view json);

    /// Whether `key` is missing, or null.
    bool isAbsent(std::string_view key) const;

    /// The value of `key`, an integer or a float; nothing when it is absent or no number.
    std::optional<double> number(std::string_view key) const;

    /// The same without its fraction; nothing either when it does not fit 64 bits.
    std::optional<std::int64_t> truncated(std::string_view key) const;

private:
    /// Holds what `object_` points into, at an address that stays.
    std::unique_ptr<simdjson::dom::parser> parser_ = std::make_unique<simdjson::dom::parser>();
    simdjson::dom::object object_;
};

} // namespace pacelet
