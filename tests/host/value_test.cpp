#include "host/value.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/expect_error.h"

namespace tessel {
namespace {

using test::ErrorNumberOf;

TEST(Value, TextBecomesANumberOrAnError) {
  struct Case {
    const char* text;
    std::optional<std::int32_t> number;
    int error = 0;
  };
  const Case cases[] = {
      {"0", 0},
      {"42", 42},
      {" -42\t", -42},
      {"+7", 7},
      {"2.5", 2},
      {"3.5", 4},
      {"-2.5", -2},
      {"1e2", 100},
      {"2147483647", 2147483647},
      {"2147483648", {}, 6},
      {"1e400", {}, 6},
      {"", {}, 13},
      {" ", {}, 13},
      {"12a", {}, 13},
      {"1 2", {}, 13},
      {"0x10", {}, 13},
      {"nan", {}, 13},
      {"inf", {}, 13},
      {"True", {}, 13},
      {"+-3", {}, 13},
  };
  for (const Case& each : cases) {
    std::optional<std::int32_t> number;
    EXPECT_EQ(ErrorNumberOf([&] { number = Value(each.text).AsInt32(); }), each.error) << each.text;
    EXPECT_EQ(number, each.number) << each.text;
  }
}

TEST(Value, SixteenBitsOverflowAtTheirLimits) {
  for (const Value& value :
       {Value(32768), Value("32768"), Value(-32769), Value(32767.5), Value("-32768.6")}) {
    EXPECT_EQ(ErrorNumberOf([&] { (void)value.AsInt16(); }), 6) << value.AsText();
  }
  EXPECT_EQ(Value(32767.49).AsInt16(), 32767);
  EXPECT_EQ(Value("-32768").AsInt16(), -32768);
}

TEST(Value, BooleanReadsWordsAndNumbers) {
  for (const char* text : {"True", "TRUE", " true ", "1", "-1", "2", "0.1"})
    EXPECT_TRUE(Value(text).AsBoolean());
  for (const char* text : {"False", "fAlSe", "0", "0.0"})
    EXPECT_FALSE(Value(text).AsBoolean());
  for (const char* text : {"yes", "", "Truee", "wahr"}) {
    EXPECT_EQ(ErrorNumberOf([&] { (void)Value(text).AsBoolean(); }), 13) << text;
  }
  EXPECT_EQ(Value(true).AsInt16(), -1);
  EXPECT_EQ(Value(true).AsDouble(), -1.0);
}

TEST(Value, NullIsEmptyTextAndNoNumber) {
  const Value null;
  EXPECT_EQ(null.AsText(), "");
  EXPECT_EQ(ErrorNumberOf([&] { (void)null.AsInt16(); }), 94);
  EXPECT_EQ(ErrorNumberOf([&] { (void)null.AsInt32(); }), 94);
  EXPECT_EQ(ErrorNumberOf([&] { (void)null.AsBoolean(); }), 94);
}

TEST(Value, TextIsPlainDecimal) {
  EXPECT_EQ(Value(0.1).AsText(), "0.1");
  EXPECT_EQ(Value(100000.0).AsText(), "100000");
  EXPECT_EQ(Value(std::int16_t{-5}).AsText(), "-5");
  EXPECT_EQ(Value(true).AsText(), "True");
}

TEST(Value, DatesCountDaysAndTheTimeForward) {
  struct Case {
    double days;
    const char* text;
    int error = 0;
  };
  const Case cases[] = {{0, "1899-12-30 00:00:00"},         {45322.656273148, "2024-01-31 15:45:02"},
                        {-1.25, "1899-12-29 06:00:00"},     {1.9999999, "1900-01-01 00:00:00"},
                        {2958465.5, "9999-12-31 12:00:00"}, {2958466, "", 6},
                        {-657434, "0100-01-01 00:00:00"},   {-657435, "", 6}};
  for (const Case& each : cases) {
    std::string text;
    EXPECT_EQ(ErrorNumberOf([&] { text = Value(Date{each.days}).AsText(); }), each.error) << each.days;
    EXPECT_EQ(text, each.text) << each.days;
  }
  EXPECT_EQ(Value(Date{2.5}).AsInt32(), 2);
  EXPECT_FALSE(Value(Date{2}) == Value(2.0));
}

TEST(Value, IntegersOfBothWidthsAreEqualAndOtherKindsAreNot) {
  EXPECT_EQ(Value(std::int16_t{5}), Value(std::int32_t{5}));
  EXPECT_FALSE(Value(5) == Value("5"));
  EXPECT_FALSE(Value(true) == Value(-1));
  EXPECT_FALSE(Value() == Value(""));
}

}  // namespace
}  // namespace tessel
