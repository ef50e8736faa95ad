#include "Core/Internet/JsonNumbers.h"

#include "Core/Support/Checked.h"
#include "Core/Support/JsonDocument.h"

namespace pacelet {

std::optional<JsonNumbers> JsonNumbers::read(std::string_view json) {
    JsonNumbers numbers;
    if (parseJson(*numbers.parser_, json).get(numbers.object_)) {
        return std::nullopt;
    }
    return numbers;
}

bool JsonNumbers::isAbsent(std::string_view key) const {
    simdjson::dom::element value;
    return object_.at_key(key).get(value) || value.is_null();
}

std::optional<double> JsonNumbers::number(std::string_view key) const {
    double value = 0;
    if (object_.at_key(key).get(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::int64_t> JsonNumbers::truncated(std::string_view key) const {
    std::int64_t integer = 0;
    if (!object_.at_key(key).get(integer)) {
        return integer;
    }
    const std::optional<double> value = number(key);
    return value ? truncatedIfFits(*value) : std::nullopt;
}

} // namespace pacelet
