// The fraction family as a host sees it: handles, ownership, the byte and
// text forms of the integers with their stated asymmetries, and the end of
// the process on text that the parser rejects.

#include "geom/fraction_unlimited.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

struct handle_deleter_t {
  void operator()(fraction_unlimited_t* f) const { fraction_unlimited__delete(f); }
};
using handle_t = std::unique_ptr<fraction_unlimited_t, handle_deleter_t>;

struct text_deleter_t {
  void operator()(char* s) const { fraction_unlimited__free_str(s); }
};

std::string num_text(const fraction_unlimited_t* f) {
  std::unique_ptr<char, text_deleter_t> s(fraction_unlimited__get_num_str(f));
  return s.get();
}

std::string den_text(const fraction_unlimited_t* f) {
  std::unique_ptr<char, text_deleter_t> s(fraction_unlimited__get_den_str(f));
  return s.get();
}

handle_t from_text(const char* num, const char* den) {
  handle_t f(fraction_unlimited__new());
  fraction_unlimited__set_num_den_str(f.get(), num, den);
  return f;
}

std::vector<uint8_t> num_bytes(const fraction_unlimited_t* f) {
  std::vector<uint8_t> out(static_cast<std::size_t>(fraction_unlimited__get_num_bytes_size(f)));
  fraction_unlimited__get_num_bytes(f, out.data(), static_cast<int32_t>(out.size()));
  return out;
}

// The numerator after a trip through its byte form.
std::string num_round_trip(const char* text) {
  handle_t f = from_text(text, "1");
  const std::vector<uint8_t> bytes = num_bytes(f.get());
  handle_t g(fraction_unlimited__new());
  fraction_unlimited__set_num_bytes(g.get(), bytes.data(), static_cast<int32_t>(bytes.size()));
  return num_text(g.get());
}

TEST(fraction_unlimited_handles, creators_give_the_documented_values) {
  handle_t fresh(fraction_unlimited__new());
  EXPECT_EQ(fraction_unlimited__get_status(fresh.get()), 0);
  EXPECT_TRUE(fraction_unlimited__is_nan(fresh.get()));
  handle_t pair(fraction_unlimited__new_num_den(6, -4));
  EXPECT_EQ(num_text(pair.get()), "6");
  EXPECT_EQ(den_text(pair.get()), "-4");
  EXPECT_EQ(fraction_unlimited__get_eva(pair.get()), 0.0);
  handle_t integer(fraction_unlimited__new_int(-9));
  EXPECT_EQ(fraction_unlimited__get_status(integer.get()), 3);
  EXPECT_EQ(fraction_unlimited__get_eva(integer.get()), -9.0);
  handle_t val(fraction_unlimited__new_val(0.1, 0.02));
  EXPECT_EQ(num_text(val.get()) + "/" + den_text(val.get()), "1/9");
  EXPECT_EQ(fraction_unlimited__get_status(val.get()), 1);
  EXPECT_EQ(fraction_unlimited__get_eva(val.get()), 0.0);
  handle_t ninf(fraction_unlimited__negative_inf());
  EXPECT_FALSE(fraction_unlimited__is_finite(ninf.get()));
  EXPECT_EQ(fraction_unlimited__sign(ninf.get()), -1);
  EXPECT_EQ(fraction_unlimited__value(ninf.get()), -INFINITY);
}

TEST(fraction_unlimited_handles, copies_and_assignment_take_every_field) {
  handle_t f(fraction_unlimited__new_num_den(6, 8));
  EXPECT_EQ(fraction_unlimited__value(f.get()), 0.75);
  handle_t copy(fraction_unlimited__new_copy(f.get()));
  EXPECT_EQ(fraction_unlimited__get_status(copy.get()), 3);
  EXPECT_EQ(fraction_unlimited__get_eva(copy.get()), 0.75);
  handle_t target(fraction_unlimited__one());
  fraction_unlimited__assign(target.get(), f.get());
  EXPECT_EQ(num_text(target.get()), "3");
  EXPECT_TRUE(fraction_unlimited__is_evaluated(target.get()));
}

TEST(fraction_unlimited_handles, null_handles_are_refused_quietly) {
  fraction_unlimited__delete(nullptr);
  fraction_unlimited__free_str(nullptr);
  handle_t one(fraction_unlimited__one());
  EXPECT_EQ(fraction_unlimited__add(one.get(), nullptr), nullptr);
  EXPECT_EQ(fraction_unlimited__new_copy(nullptr), nullptr);
  EXPECT_FALSE(fraction_unlimited__mul_assign(nullptr, one.get()));
  EXPECT_EQ(fraction_unlimited__get_num_str(nullptr), nullptr);
  fraction_unlimited__add_assign(one.get(), nullptr);
  EXPECT_TRUE(fraction_unlimited__eq_int(one.get(), 1));
}

TEST(fraction_unlimited_arithmetic, operations_forward_to_the_number) {
  handle_t a(fraction_unlimited__new_num_den(1, 2));
  handle_t b(fraction_unlimited__new_num_den(1, 3));
  handle_t sum(fraction_unlimited__add(a.get(), b.get()));
  EXPECT_EQ(num_text(sum.get()) + "/" + den_text(sum.get()), "5/6");
  handle_t quotient(fraction_unlimited__div(a.get(), b.get()));
  EXPECT_EQ(fraction_unlimited__value(quotient.get()), 1.5);
  EXPECT_EQ(fraction_unlimited__compare(a.get(), b.get()), 1);
  EXPECT_TRUE(fraction_unlimited__gt(a.get(), b.get()));
  EXPECT_FALSE(fraction_unlimited__div_assign_int(a.get(), 2));
  EXPECT_EQ(den_text(a.get()), "4");
  EXPECT_TRUE(fraction_unlimited__mul_assign_int(a.get(), 0));
  EXPECT_TRUE(fraction_unlimited__is_zero(a.get()));
  handle_t square(fraction_unlimited__get_square(b.get()));
  EXPECT_EQ(den_text(square.get()), "9");
  fraction_unlimited__set_reciprocal(b.get());
  EXPECT_EQ(fraction_unlimited__floor_int(b.get()), 3);
}

// Positives reserve a sign byte; a negative whose magnitude fills whole
// bytes loses its sign on the way back.
TEST(fraction_unlimited_bytes, integers_travel_as_little_endian_twos_complement) {
  EXPECT_EQ(num_bytes(from_text("300", "1").get()), (std::vector<uint8_t>{0x2C, 0x01}));
  EXPECT_EQ(num_bytes(from_text("-300", "1").get()), (std::vector<uint8_t>{0xD4, 0xFE}));
  EXPECT_EQ(num_bytes(from_text("128", "1").get()), (std::vector<uint8_t>{0x80, 0x00}));
  struct row_t {
    const char* text;
    int32_t size;
    const char* back;
  };
  const row_t rows[] = {{"127", 1, "127"},   {"255", 2, "255"},       {"256", 2, "256"},
                        {"0", 1, "0"},       {"-128", 1, "-128"},     {"-255", 1, "1"},
                        {"-32768", 2, "-32768"}, {"-40000", 2, "25536"},
                        {"123456789012345678901234567890", 13, "123456789012345678901234567890"}};
  for (const row_t& r : rows) {
    EXPECT_EQ(fraction_unlimited__get_num_bytes_size(from_text(r.text, "1").get()), r.size) << r.text;
    EXPECT_EQ(num_round_trip(r.text), r.back);
  }
}

TEST(fraction_unlimited_bytes, short_buffers_are_not_written) {
  handle_t f = from_text("65536", "1");
  uint8_t out[2] = {0xAA, 0xAA};
  fraction_unlimited__get_num_bytes(f.get(), out, 2);
  EXPECT_EQ(out[0], 0xAA);
  EXPECT_EQ(out[1], 0xAA);
}

TEST(fraction_unlimited_bytes, setting_bytes_drops_the_status_except_for_size_zero) {
  const uint8_t seven = 7;
  handle_t f(fraction_unlimited__new_num_den(3, 4));
  fraction_unlimited__evaluate(f.get());
  fraction_unlimited__set_den_bytes(f.get(), &seven, 1);
  EXPECT_EQ(fraction_unlimited__get_status(f.get()), 0);
  EXPECT_EQ(den_text(f.get()), "7");
  fraction_unlimited__evaluate(f.get());
  fraction_unlimited__set_num_bytes(f.get(), nullptr, 0);
  EXPECT_EQ(num_text(f.get()), "0");
  EXPECT_TRUE(fraction_unlimited__is_evaluated(f.get()));
  EXPECT_EQ(fraction_unlimited__get_eva(f.get()), 3.0 / 7.0);
}

TEST(fraction_unlimited_text, text_sets_integers_without_normalising) {
  handle_t f = from_text("-12345678901234567890123", "0");
  EXPECT_EQ(fraction_unlimited__get_status(f.get()), 0);
  EXPECT_EQ(num_text(f.get()), "-12345678901234567890123");
  EXPECT_EQ(den_text(f.get()), "0");
  EXPECT_TRUE(fraction_unlimited__add_assign_int(f.get(), 1));
  EXPECT_EQ(num_text(f.get()), "-1");
  handle_t g(fraction_unlimited__one());
  fraction_unlimited__set_num_str(g.get(), "0x1F");
  fraction_unlimited__set_den_str(g.get(), "010");
  EXPECT_EQ(num_text(g.get()) + "/" + den_text(g.get()), "31/8");
}

// The integer library's own words: which message goes with which form
// depends on its version.
constexpr const char* parser_message =
    "what\\(\\): +Unexpected (character encountered in input|content found while parsing "
    "character string)";

// On a thread of its own, as in a host: the handler that Google Test wraps
// around a test body would hide the exception from the terminate report.
void on_bare_thread(void (*set)(fraction_unlimited_t*, const char*), const char* text) {
  handle_t f(fraction_unlimited__new());
  std::thread([&] { set(f.get(), text); }).join();
}

TEST(fraction_unlimited_text_death, rejected_text_ends_the_process) {
  EXPECT_DEATH(on_bare_thread(fraction_unlimited__set_num_str, "12a"), parser_message);
  EXPECT_DEATH(on_bare_thread(fraction_unlimited__set_den_str, "0x1G"), parser_message);
  EXPECT_DEATH(on_bare_thread(fraction_unlimited__set_num_str, "09"), parser_message);
}

}  // namespace
