#pragma once

// The byte form in which hosts exchange the integers of a fraction: two's
// complement, least significant byte first, no length prefix (the length
// travels beside the bytes).
//
// The form is deliberately lopsided: a positive integer whose bit length is a
// multiple of 8 gets an extra byte for its clear sign bit, a negative one
// never does. A negative magnitude of exactly 8k bits therefore reads back as
// a positive number, except -2^(8k-1), whose top bit is the sign.

#include <cstddef>
#include <cstdint>

#include "geom/fraction_t.h"

namespace geom {

// Bytes the form of n takes; 1 for zero.
std::int32_t byte_form_size(const big_int_t& n);

// Writes n into size bytes and answers true; size is that of
// byte_form_size(n), and bytes beyond the magnitude are written as the sign
// extension. Writes nothing and answers false when size cannot hold the
// magnitude.
bool write_byte_form(const big_int_t& n, std::uint8_t* out, std::size_t size);

// The integer that size bytes spell (0 for size 0).
big_int_t read_byte_form(const std::uint8_t* bytes, std::size_t size);

// Sets one integer of f, which is f.num or f.den, from its byte form. Size 0
// sets it to 0 and keeps the status; otherwise both status bits are dropped.
void set_from_byte_form(fr& f, big_int_t& part, const std::uint8_t* bytes, std::size_t size);

}  // namespace geom
