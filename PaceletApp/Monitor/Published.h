#pragma once

#include "Core/Support/Precondition.h"

#include <bitset>
#include <concepts>
#include <cstddef>
#include <memory>
#include <utility>

namespace pacelet {

/// One published field, whatever it holds. Stays where it is: it is known by its number among the
/// fields of its owner.
class Field {
public:
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;

    std::size_t number() const { return number_; }

protected:
    explicit Field(std::size_t number)
        : number_{number} {}
    ~Field() = default;

private:
    std::size_t number_;
};

/// A set of fields of one owner.
class Fields {
public:
    static constexpr std::size_t most = 32;

    template<std::derived_from<Field>... Each>
    explicit Fields(const Each&... fields) {
        (insert(fields), ...);
    }

    void insert(const Field& field) { numbers_.set(field.number()); }
    bool empty() const { return numbers_.none(); }

    /// Whether one of these fields is in the set.
    template<std::derived_from<Field>... Each>
    bool hold(const Each&... fields) const {
        return (numbers_.test(fields.number()) || ...);
    }

    bool operator==(const Fields&) const = default;

private:
    std::bitset<most> numbers_;
};

/// Numbers the fields of an owner, and collects which of them changed.
class FieldChanges {
public:
    std::size_t newNumber() {
        precondition(count_ < Fields::most, "an owner publishes too many fields");
        return count_++;
    }

    void note(const Field& field) { changed_.insert(field); }

    /// The fields that changed since the last call.
    Fields take() { return std::exchange(changed_, Fields{}); }

private:
    std::size_t count_ = 0;
    Fields changed_;
};

/// A field that its owner writes and all others read. A value is never changed, only replaced by
/// another: whoever shows a value may hold it for as long as it likes, and copies nothing.
template<typename Value, typename Owner>
class Published final : public Field {
public:
    using Held = std::shared_ptr<const Value>;

    /// `changes` outlives this.
    explicit Published(FieldChanges& changes, Value initial = {})
        : Field{changes.newNumber()},
          changes_{changes},
          value_{std::make_shared<const Value>(std::move(initial))} {}

    /// The value as it is now; the reference is good until the owner writes the next one.
    const Value& operator()() const { return *value_; }

    /// The value as it is now, to keep.
    const Held& held() const { return value_; }

private:
    friend Owner;

    /// Notes whether that changed it.
    void set(Value next) {
        if (*value_ != next) {
            value_ = std::make_shared<const Value>(std::move(next));
            changes_.note(*this);
        }
    }

    FieldChanges& changes_;
    Held value_;
};

/// A part of a shared value, which keeps the whole of it alive.
template<typename Part, typename Whole>
std::shared_ptr<const Part> partOf(const std::shared_ptr<const Whole>& whole, const Part& part) {
    return {whole, &part};
}

} // namespace pacelet
