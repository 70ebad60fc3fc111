#ifndef QUVRA_GEOM_FRACTION_UNLIMITED_H
#define QUVRA_GEOM_FRACTION_UNLIMITED_H

/* Exact rational numbers on unlimited integers, for hosts.

   A handle points to one number held by the library. Every function named
   "new" below, and every one documented as returning a new handle, gives a
   handle owned by the caller: free it with fraction_unlimited__delete. All
   arguments named f, a and b are handles and must not be null; a null handle
   is refused quietly (nothing changes, results are 0, false or null).

   Numbers are lazy: sums and products are not reduced until pack, evaluate or
   value asks for it. The status word has bit 0 "packed" (in lowest terms) and
   bit 1 "evaluated" (the cached double is valid). NaN is 0/0, the infinities
   are 1/0 and -1/0; they follow the same formulas as finite values, so
   +inf + +inf is NaN, and any comparison with a NaN answers "equal".

   Integers cross as text (decimal, minus sign when negative) or in byte form:
   two's complement, least significant byte first, no length prefix.

   No exception leaves these functions. Text that the integer parser rejects
   ends the process: pass only an optional sign and digits (a "0x" prefix
   reads hexadecimal, a leading "0" octal). One handle must not be used by two
   threads at once, also for reads, since reads may cache. */

#include <stdbool.h>
#include <stdint.h>

#include "quvra_export.h"

#ifdef __cplusplus
namespace geom {
template <unsigned Bits, class Approx>
class fraction_t;
}
typedef geom::fraction_t<0, double> fraction_unlimited_t;
#else
typedef struct fraction_unlimited_t fraction_unlimited_t;
#endif

QV_EXTERN_C_BEGIN

/* Creation. Each returns a new handle, or null when allocation fails. */

/* 0/0 with status 0: a NaN not yet normalised. */
QV_API fraction_unlimited_t* fraction_unlimited__new(void) QV_NOEXCEPT;
/* A copy of all fields, including the cached double and the status. */
QV_API fraction_unlimited_t* fraction_unlimited__new_copy(const fraction_unlimited_t* f) QV_NOEXCEPT;
/* i/1, packed and evaluated. */
QV_API fraction_unlimited_t* fraction_unlimited__new_int(int64_t i) QV_NOEXCEPT;
/* num/den exactly as given, status 0: not reduced, not normalised, and the
   only way (with the den setters) to a negative denominator. */
QV_API fraction_unlimited_t* fraction_unlimited__new_num_den(int64_t num, int64_t den) QV_NOEXCEPT;
/* The simplest fraction within r of v, in lowest terms, not evaluated. NaN,
   infinite v and v smaller than r in magnitude are always answered;
   otherwise null unless r is positive, |v| < 2^53, and r >= 2^-48 where
   |v| < 1 (the bounds within which the answer is found quickly). */
QV_API fraction_unlimited_t* fraction_unlimited__new_val(double v, double r) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__zero(void) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__one(void) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__nan(void) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__positive_inf(void) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__negative_inf(void) QV_NOEXCEPT;
/* Null-safe. */
QV_API void fraction_unlimited__delete(fraction_unlimited_t* f) QV_NOEXCEPT;

/* f := a, all fields. */
QV_API void fraction_unlimited__assign(fraction_unlimited_t* f, const fraction_unlimited_t* a) QV_NOEXCEPT;

/* Arithmetic giving a new handle: the cross products, unreduced, with a zero
   denominator or numerator turned into its canonical form. */
QV_API fraction_unlimited_t* fraction_unlimited__add(const fraction_unlimited_t* a,
                                                     const fraction_unlimited_t* b) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__sub(const fraction_unlimited_t* a,
                                                     const fraction_unlimited_t* b) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__mul(const fraction_unlimited_t* a,
                                                     const fraction_unlimited_t* b) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__div(const fraction_unlimited_t* a,
                                                     const fraction_unlimited_t* b) QV_NOEXCEPT;

/* In-place arithmetic on f; a may be f itself. Those returning bool answer
   true when the result is one of the canonical forms 0/1, 0/0, 1/0, -1/0. */
QV_API void fraction_unlimited__add_assign(fraction_unlimited_t* f, const fraction_unlimited_t* a) QV_NOEXCEPT;
QV_API void fraction_unlimited__sub_assign(fraction_unlimited_t* f, const fraction_unlimited_t* a) QV_NOEXCEPT;
QV_API bool fraction_unlimited__mul_assign(fraction_unlimited_t* f, const fraction_unlimited_t* a) QV_NOEXCEPT;
QV_API bool fraction_unlimited__div_assign(fraction_unlimited_t* f, const fraction_unlimited_t* a) QV_NOEXCEPT;
QV_API bool fraction_unlimited__add_assign_int(fraction_unlimited_t* f, int64_t i) QV_NOEXCEPT;
QV_API bool fraction_unlimited__sub_assign_int(fraction_unlimited_t* f, int64_t i) QV_NOEXCEPT;
QV_API bool fraction_unlimited__mul_assign_int(fraction_unlimited_t* f, int64_t i) QV_NOEXCEPT;
QV_API bool fraction_unlimited__div_assign_int(fraction_unlimited_t* f, int64_t i) QV_NOEXCEPT;

/* Unary operations giving a new handle. */
QV_API fraction_unlimited_t* fraction_unlimited__neg(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__get_abs(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__get_reciprocal(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API fraction_unlimited_t* fraction_unlimited__get_square(const fraction_unlimited_t* f) QV_NOEXCEPT;

/* The same in place. negate and set_abs keep a cached double valid;
   set_reciprocal drops it and does not normalise (1/0 from 0/1). */
QV_API void fraction_unlimited__negate(fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API void fraction_unlimited__set_abs(fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API void fraction_unlimited__set_reciprocal(fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API void fraction_unlimited__set_square(fraction_unlimited_t* f) QV_NOEXCEPT;

/* Comparisons never look at the cached double. eq is structural when both
   are packed and compares cross products otherwise; lt..ge always compare
   cross products. */
QV_API bool fraction_unlimited__eq(const fraction_unlimited_t* a, const fraction_unlimited_t* b) QV_NOEXCEPT;
QV_API bool fraction_unlimited__lt(const fraction_unlimited_t* a, const fraction_unlimited_t* b) QV_NOEXCEPT;
QV_API bool fraction_unlimited__le(const fraction_unlimited_t* a, const fraction_unlimited_t* b) QV_NOEXCEPT;
QV_API bool fraction_unlimited__gt(const fraction_unlimited_t* a, const fraction_unlimited_t* b) QV_NOEXCEPT;
QV_API bool fraction_unlimited__ge(const fraction_unlimited_t* a, const fraction_unlimited_t* b) QV_NOEXCEPT;
QV_API bool fraction_unlimited__eq_int(const fraction_unlimited_t* f, int64_t i) QV_NOEXCEPT;
QV_API bool fraction_unlimited__lt_int(const fraction_unlimited_t* f, int64_t i) QV_NOEXCEPT;
QV_API bool fraction_unlimited__le_int(const fraction_unlimited_t* f, int64_t i) QV_NOEXCEPT;
QV_API bool fraction_unlimited__gt_int(const fraction_unlimited_t* f, int64_t i) QV_NOEXCEPT;
QV_API bool fraction_unlimited__ge_int(const fraction_unlimited_t* f, int64_t i) QV_NOEXCEPT;
/* -1, 0 or +1; 0 when either side is NaN. */
QV_API int32_t fraction_unlimited__compare(const fraction_unlimited_t* a, const fraction_unlimited_t* b) QV_NOEXCEPT;
/* -1, 0 or +1, by the numerator alone. */
QV_API int32_t fraction_unlimited__sign(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API bool fraction_unlimited__is_zero(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API bool fraction_unlimited__is_nan(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API bool fraction_unlimited__is_finite(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API bool fraction_unlimited__is_packed(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API bool fraction_unlimited__is_evaluated(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API uint16_t fraction_unlimited__get_status(const fraction_unlimited_t* f) QV_NOEXCEPT;

/* Reduction and the cached double. value evaluates (packing first) and
   returns the cache; rough_value does not pack; get_eva returns the raw
   cache whatever the status says; simplify replaces the number by the
   simplest fraction within r of its double, the one lossy operation, and
   leaves it as it is where new_val would refuse that double and r. */
QV_API void fraction_unlimited__pack(fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API void fraction_unlimited__evaluate(fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API double fraction_unlimited__value(fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API double fraction_unlimited__rough_value(fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API double fraction_unlimited__get_eva(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API void fraction_unlimited__simplify(fraction_unlimited_t* f, double r) QV_NOEXCEPT;

/* floor and ceil, saturating at the ends of the 32-bit range. */
QV_API int32_t fraction_unlimited__floor_int(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API int32_t fraction_unlimited__ceil_int(const fraction_unlimited_t* f) QV_NOEXCEPT;

/* Decimal text of an integer. Owned by the caller, NUL-terminated; free it
   with fraction_unlimited__free_str and by no other means. */
QV_API char* fraction_unlimited__get_num_str(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API char* fraction_unlimited__get_den_str(const fraction_unlimited_t* f) QV_NOEXCEPT;
/* Parse text into an integer and drop both status bits; a zero denominator
   stays 0 until the next arithmetic. Text that the parser rejects ends the
   process. */
QV_API void fraction_unlimited__set_num_str(fraction_unlimited_t* f, const char* text) QV_NOEXCEPT;
QV_API void fraction_unlimited__set_den_str(fraction_unlimited_t* f, const char* text) QV_NOEXCEPT;
QV_API void fraction_unlimited__set_num_den_str(fraction_unlimited_t* f, const char* num_text,
                                                const char* den_text) QV_NOEXCEPT;
/* Null-safe. */
QV_API void fraction_unlimited__free_str(char* text) QV_NOEXCEPT;

/* Byte form. Ask get_*_bytes_size, provide exactly that many bytes, and call
   get_*_bytes with the same size; a size too small for the magnitude writes
   nothing. A negative integer gets no extra sign byte, so a negative whose
   magnitude has exactly 8k bits (other than -2^(8k-1)) reads back as a
   positive number: this asymmetry is part of the form. set_*_bytes with
   size 0 sets the integer to 0 and keeps the status; any other size drops
   both status bits. */
QV_API int32_t fraction_unlimited__get_num_bytes_size(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API int32_t fraction_unlimited__get_den_bytes_size(const fraction_unlimited_t* f) QV_NOEXCEPT;
QV_API void fraction_unlimited__get_num_bytes(const fraction_unlimited_t* f, uint8_t* out, int32_t size) QV_NOEXCEPT;
QV_API void fraction_unlimited__get_den_bytes(const fraction_unlimited_t* f, uint8_t* out, int32_t size) QV_NOEXCEPT;
QV_API void fraction_unlimited__set_num_bytes(fraction_unlimited_t* f, const uint8_t* bytes, int32_t size) QV_NOEXCEPT;
QV_API void fraction_unlimited__set_den_bytes(fraction_unlimited_t* f, const uint8_t* bytes, int32_t size) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
