#pragma once

// The integer behind every exact number. It is named in this one place so
// that another backend can be measured by changing the alias: the fraction,
// its byte form and the exact vectors use only what every Boost.Multiprecision
// integer offers (arithmetic, gcd, msb, bit import, decimal text).
//
// cpp_int keeps values up to two 64-bit limbs inside the object, so integers
// of a few dozen bits, and the products of two of them, never touch the heap.

#include <cstddef>
#include <cstdint>

// GCC 12 cannot see through the union that holds a cpp_int's inline limbs
// and reports them as maybe uninitialized wherever msb() is inlined.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <boost/multiprecision/cpp_int.hpp>
#pragma GCC diagnostic pop

namespace geom {

using big_int_t = boost::multiprecision::cpp_int;

// Greatest common divisor of the magnitudes; gcd(0, 0) is 0. Integers of one
// machine word, the common case on a model grid, take a word-sized path.
big_int_t gcd_of(const big_int_t& a, const big_int_t& b);

// Whether |n| fits one 64-bit word, and that magnitude: the word-sized
// paths that spare small values the general algorithms.
bool fits_word(const big_int_t& n);
std::uint64_t word_magnitude(const big_int_t& n);

// Number of bits of the magnitude; 0 for zero.
std::size_t bit_length(const big_int_t& n);

// Least common multiple of the magnitudes; 0 when either is 0.
big_int_t lcm_of(const big_int_t& a, const big_int_t& b);

}  // namespace geom
