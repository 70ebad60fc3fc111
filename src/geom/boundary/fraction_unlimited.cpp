// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
// The decimal strings of this family come from the integer library's str().
// At -O3 GCC 12 inlines it and then warns (-Wrestrict) that a copy inside
// std::string may overlap itself with a length near 2^63 that no path can
// reach: a false positive of that pass. The warning points into the standard
// headers, so it is silenced before they are included, for this file alone.
#pragma GCC diagnostic ignored "-Wrestrict"

#include "geom/fraction_unlimited.h"

#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <utility>

#include "common/new_nothrow.h"
#include "geom/fraction_byte_form.h"
#include "geom/fraction_t.h"

using geom::fr;

namespace {

fr* new_fraction(fr value) noexcept { return common::new_nothrow<fr>(std::move(value)); }

// A heap copy that the host frees with fraction_unlimited__free_str.
char* heap_copy(const std::string& text) noexcept {
  char* out = static_cast<char*>(std::malloc(text.size() + 1));
  if (out) std::memcpy(out, text.c_str(), text.size() + 1);
  return out;
}

// The integer library parses; text it rejects throws, and since no exception
// leaves the boundary, ends the process.
geom::big_int_t parse_integer(const char* text) {
  geom::big_int_t n;
  n.assign(text);
  return n;
}

void get_bytes(const geom::big_int_t& n, uint8_t* out, int32_t size) noexcept {
  if (out && size > 0) geom::write_byte_form(n, out, static_cast<std::size_t>(size));
}

void set_bytes(fr* f, geom::big_int_t fr::*part, const uint8_t* bytes, int32_t size) noexcept {
  if (!f || size < 0 || (!bytes && size > 0)) return;
  geom::set_from_byte_form(*f, f->*part, bytes, static_cast<std::size_t>(size));
}

}  // namespace

extern "C" {

fr* fraction_unlimited__new(void) noexcept { return common::new_nothrow<fr>(); }
fr* fraction_unlimited__new_copy(const fr* f) noexcept { return f ? new_fraction(*f) : nullptr; }
fr* fraction_unlimited__new_int(int64_t i) noexcept { return common::new_nothrow<fr>(i); }
fr* fraction_unlimited__new_num_den(int64_t num, int64_t den) noexcept { return common::new_nothrow<fr>(num, den); }
fr* fraction_unlimited__new_val(double v, double r) noexcept {
  return geom::from_double_bounded(v, r) ? new_fraction(geom::from_double(v, r)) : nullptr;
}
fr* fraction_unlimited__zero(void) noexcept { return new_fraction(fr::zero()); }
fr* fraction_unlimited__one(void) noexcept { return new_fraction(fr::one()); }
fr* fraction_unlimited__nan(void) noexcept { return new_fraction(fr::nan()); }
fr* fraction_unlimited__positive_inf(void) noexcept { return new_fraction(fr::positive_inf()); }
fr* fraction_unlimited__negative_inf(void) noexcept { return new_fraction(fr::negative_inf()); }
void fraction_unlimited__delete(fr* f) noexcept { delete f; }

void fraction_unlimited__assign(fr* f, const fr* a) noexcept {
  if (f && a) *f = *a;
}

fr* fraction_unlimited__add(const fr* a, const fr* b) noexcept { return a && b ? new_fraction(*a + *b) : nullptr; }
fr* fraction_unlimited__sub(const fr* a, const fr* b) noexcept { return a && b ? new_fraction(*a - *b) : nullptr; }
fr* fraction_unlimited__mul(const fr* a, const fr* b) noexcept { return a && b ? new_fraction(*a * *b) : nullptr; }
fr* fraction_unlimited__div(const fr* a, const fr* b) noexcept { return a && b ? new_fraction(*a / *b) : nullptr; }

void fraction_unlimited__add_assign(fr* f, const fr* a) noexcept {
  if (f && a) f->add_assign(*a);
}
void fraction_unlimited__sub_assign(fr* f, const fr* a) noexcept {
  if (f && a) f->sub_assign(*a);
}
bool fraction_unlimited__mul_assign(fr* f, const fr* a) noexcept { return f && a && f->mul_assign(*a); }
bool fraction_unlimited__div_assign(fr* f, const fr* a) noexcept { return f && a && f->div_assign(*a); }
bool fraction_unlimited__add_assign_int(fr* f, int64_t i) noexcept { return f && f->add_assign(i); }
bool fraction_unlimited__sub_assign_int(fr* f, int64_t i) noexcept { return f && f->sub_assign(i); }
bool fraction_unlimited__mul_assign_int(fr* f, int64_t i) noexcept { return f && f->mul_assign(i); }
bool fraction_unlimited__div_assign_int(fr* f, int64_t i) noexcept { return f && f->div_assign(i); }

fr* fraction_unlimited__neg(const fr* f) noexcept { return f ? new_fraction(f->neg()) : nullptr; }
fr* fraction_unlimited__get_abs(const fr* f) noexcept { return f ? new_fraction(f->get_abs()) : nullptr; }
fr* fraction_unlimited__get_reciprocal(const fr* f) noexcept { return f ? new_fraction(f->get_reciprocal()) : nullptr; }
fr* fraction_unlimited__get_square(const fr* f) noexcept { return f ? new_fraction(f->get_square()) : nullptr; }

void fraction_unlimited__negate(fr* f) noexcept {
  if (f) f->negate();
}
void fraction_unlimited__set_abs(fr* f) noexcept {
  if (f) f->set_abs();
}
void fraction_unlimited__set_reciprocal(fr* f) noexcept {
  if (f) f->set_reciprocal();
}
void fraction_unlimited__set_square(fr* f) noexcept {
  if (f) f->set_square();
}

bool fraction_unlimited__eq(const fr* a, const fr* b) noexcept { return a && b && eq(*a, *b); }
bool fraction_unlimited__lt(const fr* a, const fr* b) noexcept { return a && b && lt(*a, *b); }
bool fraction_unlimited__le(const fr* a, const fr* b) noexcept { return a && b && le(*a, *b); }
bool fraction_unlimited__gt(const fr* a, const fr* b) noexcept { return a && b && gt(*a, *b); }
bool fraction_unlimited__ge(const fr* a, const fr* b) noexcept { return a && b && ge(*a, *b); }
bool fraction_unlimited__eq_int(const fr* f, int64_t i) noexcept { return f && eq_int(*f, i); }
bool fraction_unlimited__lt_int(const fr* f, int64_t i) noexcept { return f && lt_int(*f, i); }
bool fraction_unlimited__le_int(const fr* f, int64_t i) noexcept { return f && le_int(*f, i); }
bool fraction_unlimited__gt_int(const fr* f, int64_t i) noexcept { return f && gt_int(*f, i); }
bool fraction_unlimited__ge_int(const fr* f, int64_t i) noexcept { return f && ge_int(*f, i); }
int32_t fraction_unlimited__compare(const fr* a, const fr* b) noexcept { return a && b ? compare(*a, *b) : 0; }
int32_t fraction_unlimited__sign(const fr* f) noexcept { return f ? f->sign() : 0; }
bool fraction_unlimited__is_zero(const fr* f) noexcept { return f && f->is_zero(); }
bool fraction_unlimited__is_nan(const fr* f) noexcept { return f && f->is_nan(); }
bool fraction_unlimited__is_finite(const fr* f) noexcept { return f && f->is_finite(); }
bool fraction_unlimited__is_packed(const fr* f) noexcept { return f && f->is_packed(); }
bool fraction_unlimited__is_evaluated(const fr* f) noexcept { return f && f->is_evaluated(); }
uint16_t fraction_unlimited__get_status(const fr* f) noexcept { return f ? f->status : 0; }

void fraction_unlimited__pack(fr* f) noexcept {
  if (f) f->pack();
}
void fraction_unlimited__evaluate(fr* f) noexcept {
  if (f) f->evaluate();
}
double fraction_unlimited__value(fr* f) noexcept { return f ? f->value() : std::numeric_limits<double>::quiet_NaN(); }
double fraction_unlimited__rough_value(fr* f) noexcept {
  return f ? f->rough_value() : std::numeric_limits<double>::quiet_NaN();
}
double fraction_unlimited__get_eva(const fr* f) noexcept {
  return f ? f->get_eva() : std::numeric_limits<double>::quiet_NaN();
}
void fraction_unlimited__simplify(fr* f, double r) noexcept {
  if (!f) return;
  fr evaluated = *f;
  evaluated.evaluate();
  if (geom::from_double_bounded(evaluated.eva, r)) f->simplify(r);
}

int32_t fraction_unlimited__floor_int(const fr* f) noexcept { return f ? f->floor_int() : 0; }
int32_t fraction_unlimited__ceil_int(const fr* f) noexcept { return f ? f->ceil_int() : 0; }

char* fraction_unlimited__get_num_str(const fr* f) noexcept { return f ? heap_copy(f->num.str()) : nullptr; }
char* fraction_unlimited__get_den_str(const fr* f) noexcept { return f ? heap_copy(f->den.str()) : nullptr; }
void fraction_unlimited__set_num_str(fr* f, const char* text) noexcept {
  if (f && text) f->set_num(parse_integer(text));
}
void fraction_unlimited__set_den_str(fr* f, const char* text) noexcept {
  if (f && text) f->set_den(parse_integer(text));
}
void fraction_unlimited__set_num_den_str(fr* f, const char* num_text, const char* den_text) noexcept {
  if (!f || !num_text || !den_text) return;
  // Both parse before either is stored.
  geom::big_int_t num = parse_integer(num_text);
  geom::big_int_t den = parse_integer(den_text);
  f->set_num(std::move(num));
  f->set_den(std::move(den));
}
void fraction_unlimited__free_str(char* text) noexcept { std::free(text); }

int32_t fraction_unlimited__get_num_bytes_size(const fr* f) noexcept { return f ? geom::byte_form_size(f->num) : 0; }
int32_t fraction_unlimited__get_den_bytes_size(const fr* f) noexcept { return f ? geom::byte_form_size(f->den) : 0; }
void fraction_unlimited__get_num_bytes(const fr* f, uint8_t* out, int32_t size) noexcept {
  if (f) get_bytes(f->num, out, size);
}
void fraction_unlimited__get_den_bytes(const fr* f, uint8_t* out, int32_t size) noexcept {
  if (f) get_bytes(f->den, out, size);
}
void fraction_unlimited__set_num_bytes(fr* f, const uint8_t* bytes, int32_t size) noexcept {
  set_bytes(f, &fr::num, bytes, size);
}
void fraction_unlimited__set_den_bytes(fr* f, const uint8_t* bytes, int32_t size) noexcept {
  set_bytes(f, &fr::den, bytes, size);
}
}
// NOLINTEND(bugprone-reserved-identifier)
