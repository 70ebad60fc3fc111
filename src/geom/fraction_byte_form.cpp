#include "geom/fraction_byte_form.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace geom {

namespace {

std::size_t magnitude_bytes(const big_int_t& n) {
  if (n.is_zero()) return 1;
  return (bit_length(n) + 7) / 8;
}

// Two's complement negation of a little-endian byte string, in place.
void negate_bytes(std::uint8_t* bytes, std::size_t size) {
  unsigned carry = 1;
  for (std::size_t i = 0; i < size; ++i) {
    const unsigned sum = static_cast<std::uint8_t>(~bytes[i]) + carry;
    bytes[i] = static_cast<std::uint8_t>(sum);
    carry = sum >> 8;
  }
}

}  // namespace

std::int32_t byte_form_size(const big_int_t& n) {
  // Only a positive value reserves a byte for its sign bit.
  const bool sign_byte = n.sign() > 0 && bit_length(n) % 8 == 0;
  return static_cast<std::int32_t>(magnitude_bytes(n) + (sign_byte ? 1 : 0));
}

bool write_byte_form(const big_int_t& n, std::uint8_t* out, std::size_t size) {
  const std::size_t needed = magnitude_bytes(n);
  if (size < needed) return false;
  if (n.is_zero()) {
    out[0] = 0;
    return true;
  }
  const big_int_t magnitude = n.sign() < 0 ? big_int_t(-n) : n;
  export_bits(magnitude, out, 8, false);
  std::fill(out + needed, out + size, std::uint8_t{0});
  if (n.sign() < 0) negate_bytes(out, size);
  return true;
}

big_int_t read_byte_form(const std::uint8_t* bytes, std::size_t size) {
  big_int_t n;
  if (size == 0) return n;
  if ((bytes[size - 1] & 0x80) == 0) {
    import_bits(n, bytes, bytes + size, 8, false);
    return n;
  }
  std::vector<std::uint8_t> magnitude(bytes, bytes + size);
  negate_bytes(magnitude.data(), size);
  import_bits(n, magnitude.begin(), magnitude.end(), 8, false);
  return -n;
}

void set_from_byte_form(fr& f, big_int_t& part, const std::uint8_t* bytes, std::size_t size) {
  part = read_byte_form(bytes, size);
  if (size != 0) f.status &= ~fr::canonical_status;
}

}  // namespace geom
