#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pacelet {

/// `value` in the shortest form that reads back as the same float, with an exponent from 2^63 up;
/// "0" for a negative zero too. The value must be finite.
std::string shortestFloat(double value);

/// Writes compact JSON in one pass. The caller keeps the order of calls right (a key before each
/// member's value); the commas are put by the writer.
class JsonWriter {
public:
    JsonWriter& beginObject() { return open('{'); }
    JsonWriter& endObject() { return close('}'); }
    JsonWriter& beginArray() { return open('['); }
    JsonWriter& endArray() { return close(']'); }
    JsonWriter& key(std::string_view name);
    JsonWriter& value(std::string_view text);
    JsonWriter& value(const char* text) { return value(std::string_view{text}); }
    JsonWriter& value(double number);
    JsonWriter& value(std::int64_t number);
    JsonWriter& value(bool truth);

    /// The text so far; the writer is empty afterwards.
    std::string take();

private:
    JsonWriter& open(char bracket);
    JsonWriter& close(char bracket);
    void separate();
    void quote(std::string_view text);

    std::string text_;
    bool needsComma_ = false;
};

} // namespace pacelet
