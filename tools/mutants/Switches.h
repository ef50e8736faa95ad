#pragma once

#include <algorithm>
#include <cstdlib>
#include <type_traits>
#include <unistd.h>
#include <utility>

/// Small changes to the code that all stand in one program: the one whose number is in the variable
/// PACELET_MUTANT is made, the others are asleep. Every operator keeps its place, and binds as
/// before: `a < b` becomes `a < ::mutants::Less{7} < b`.
namespace mutants {

inline bool on(int number) {
    static const int chosen = [] {
        const char* const text = std::getenv("PACELET_MUTANT");
        return text == nullptr ? -1 : std::atoi(text);
    }();
    return number == chosen;
}

/// How a program ends whose change would not have compiled for these types.
[[noreturn]] inline void impossible() {
    _exit(77);
}

/// What `left sign other` gives, in the type of what stands there.
#define PACELET_CHANGED(number, Type, changed, unchanged)                                          \
    if (::mutants::on(number)) {                                                                   \
        if constexpr (requires { static_cast<Type>(changed); }) {                                  \
            return static_cast<Type>(changed);                                                     \
        } else {                                                                                   \
            ::mutants::impossible();                                                               \
        }                                                                                          \
    }                                                                                              \
    return unchanged;

#define PACELET_OPERATOR(name, sign, other)                                                        \
    struct name {                                                                                  \
        int number;                                                                                \
    };                                                                                             \
    template<typename Value>                                                                       \
    struct name##Behind {                                                                          \
        const Value& value;                                                                        \
        int number;                                                                                \
    };                                                                                             \
    template<typename Value>                                                                       \
    name##Behind<Value> operator sign(const Value& value, name mark) {                             \
        return {value, mark.number};                                                               \
    }                                                                                              \
    template<typename Value, typename Other>                                                       \
    auto operator sign(name##Behind<Value> left, const Other& right)                               \
        ->std::decay_t<decltype(left.value sign right)> {                                          \
        using Result = std::decay_t<decltype(left.value sign right)>;                              \
        PACELET_CHANGED(left.number, Result, left.value other right, left.value sign right)        \
    }

PACELET_OPERATOR(Less, <, <=)
PACELET_OPERATOR(AtMost, <=, <)
PACELET_OPERATOR(More, >, >=)
PACELET_OPERATOR(AtLeast, >=, >)
PACELET_OPERATOR(Same, ==, !=)
PACELET_OPERATOR(Other, !=, ==)
PACELET_OPERATOR(Plus, +, -)
PACELET_OPERATOR(Minus, -, +)
PACELET_OPERATOR(Times, *, /)
PACELET_OPERATOR(Over, /, *)

/// The same for assignments, which bind to the right: `a += ::mutants::Add{7} += b`.
#define PACELET_ASSIGNMENT(name, sign, other)                                                      \
    struct name {                                                                                  \
        int number;                                                                                \
    };                                                                                             \
    template<typename Value>                                                                       \
    struct name##Before {                                                                          \
        const Value& value;                                                                        \
        int number;                                                                                \
    };                                                                                             \
    template<typename Value>                                                                       \
    name##Before<Value> operator sign(name mark, const Value& value) {                             \
        return {value, mark.number};                                                               \
    }                                                                                              \
    template<typename Target, typename Value>                                                      \
    Target& operator sign(Target& target, name##Before<Value> right) {                             \
        PACELET_CHANGED(right.number, Target&, target other right.value, target sign right.value)  \
    }

PACELET_ASSIGNMENT(Add, +=, -=)
PACELET_ASSIGNMENT(Subtract, -=, +=)

/// One function or the other.
#define PACELET_CALL(number, function, other)                                                      \
    [](auto&&... values) -> decltype(auto) {                                                       \
        using Result = decltype(function(std::forward<decltype(values)>(values)...));              \
        PACELET_CHANGED(number, Result, other(std::forward<decltype(values)>(values)...),          \
                        function(std::forward<decltype(values)>(values)...))                       \
    }

template<typename List>
decltype(auto) front(int number, List&& list) {
    return on(number) ? list.back() : list.front();
}

template<typename List>
decltype(auto) back(int number, List&& list) {
    return on(number) ? list.front() : list.back();
}

template<typename Text, typename Part>
bool startsWith(int number, const Text& text, const Part& part) {
    return on(number) ? text.ends_with(part) : text.starts_with(part);
}

template<typename Text, typename Part>
bool endsWith(int number, const Text& text, const Part& part) {
    return on(number) ? text.starts_with(part) : text.ends_with(part);
}

} // namespace mutants
