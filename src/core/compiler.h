// Forms that only some compilers know, each beside a portable one in plain C++. Above src/platform nothing
// else has any but zel/api.h: scripts/compilers.sh looks.
//
// ZEL_PORTABLE takes the portable forms alone, as the preset `portable` does.
#pragma once

#include <cstddef>

#if (defined(__GNUC__) || defined(__clang__)) && !defined(ZEL_PORTABLE)
#define ZEL_GNU_FORMS 1
#else
#define ZEL_GNU_FORMS 0
#endif

namespace Zel::compiler {

/// Has the processor fetch what is soon to be used. The portable form leaves that to the processor.
inline void prefetch([[maybe_unused]] void const* place) {
#if ZEL_GNU_FORMS
    __builtin_prefetch(place);
#endif
}

// Numbers that are worked on side by side. There is no portable form of these: what uses them has a namespace
// `vectorized` for them and one `scalar` beside it, which is taken when there are no vectors.
#if ZEL_GNU_FORMS

template <class Number, std::size_t count>
struct VectorOf {
    typedef Number Type __attribute__((vector_size(count * sizeof(Number)))); // NOLINT(modernize-use-using)
};

/// `count` numbers, with the operators of one. `vector[i]` is number i.
template <class Number, std::size_t count>
using Vector = typename VectorOf<Number, count>::Type;

/// The numbers at `positions`: those of `a` come first, then those of `b`.
template <int... positions, class V>
auto shuffled(V a, V b) {
    return __builtin_shufflevector(a, b, positions...);
}

/// Each number converted as static_cast does.
template <class To, class From>
To converted(From from) {
    return __builtin_convertvector(from, To);
}

/// The same bits taken for other numbers.
template <class To, class From>
To sameBits(From from) {
    static_assert(sizeof(To) == sizeof(From));
    return reinterpret_cast<To>(from);
}

#endif

} // namespace Zel::compiler
