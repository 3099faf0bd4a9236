// Value types for vectors, intervals and half-precision numbers: all zero by default, compared component by
// component.
#pragma once

#include <cstdint>

namespace Zel {

/// A vector of two components.
template <class T>
struct Vector2Template {
    T x{}, y{};

    constexpr Vector2Template() = default;
    constexpr Vector2Template(T x_, T y_) : x(x_), y(y_) {}
    friend constexpr bool operator==(Vector2Template const& a, Vector2Template const& b) {
        return a.x == b.x && a.y == b.y;
    }
    friend constexpr bool operator!=(Vector2Template const& a, Vector2Template const& b) { return !(a == b); }
};

/// A vector of three components.
template <class T>
struct Vector3Template {
    T x{}, y{}, z{};

    constexpr Vector3Template() = default;
    constexpr Vector3Template(T x_, T y_, T z_) : x(x_), y(y_), z(z_) {}
    friend constexpr bool operator==(Vector3Template const& a, Vector3Template const& b) {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    }
    friend constexpr bool operator!=(Vector3Template const& a, Vector3Template const& b) { return !(a == b); }
};

/// A vector of four components.
template <class T>
struct Vector4Template {
    T x{}, y{}, z{}, w{};

    constexpr Vector4Template() = default;
    constexpr Vector4Template(T x_, T y_, T z_, T w_) : x(x_), y(y_), z(z_), w(w_) {}
    friend constexpr bool operator==(Vector4Template const& a, Vector4Template const& b) {
        return a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
    }
    friend constexpr bool operator!=(Vector4Template const& a, Vector4Template const& b) { return !(a == b); }
};

/// A closed interval. That min is at most max is not checked here; a Script refuses one that is not.
template <class T>
struct IntervalTemplate {
    T min{}, max{};

    constexpr IntervalTemplate() = default;
    constexpr IntervalTemplate(T minimum, T maximum) : min{minimum}, max{maximum} {}
    friend constexpr bool operator==(IntervalTemplate const& a, IntervalTemplate const& b) {
        return a.min == b.min && a.max == b.max;
    }
    friend constexpr bool operator!=(IntervalTemplate const& a, IntervalTemplate const& b) {
        return !(a == b);
    }
};

/// A half-precision number (IEEE 754 binary16), kept as its bits.
struct Float16 {
    std::uint16_t bits{};

    constexpr Float16() = default;
    constexpr explicit Float16(std::uint16_t bits_) : bits(bits_) {}
    friend constexpr bool operator==(Float16 a, Float16 b) { return a.bits == b.bits; }
    friend constexpr bool operator!=(Float16 a, Float16 b) { return a.bits != b.bits; }
};

} // namespace Zel
