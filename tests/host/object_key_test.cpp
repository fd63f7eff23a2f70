#include "host/object_key.h"

#include <gtest/gtest.h>

#include "support/expect_error.h"

namespace tessel {
namespace {

TEST(ObjectKey, TextLeadsBackToTheKey) {
  const ObjectKey key{-32768, 2147483647};
  EXPECT_EQ(ObjectKeyText(key, '_'), "-32768_2147483647");
  EXPECT_EQ(ParseObjectKey("-32768_2147483647", '_'), key);
  EXPECT_EQ(ParseObjectKey("1201:4711:0", ':'), (ObjectKey{1201, 4711}));
}

TEST(ObjectKey, MalformedTextIsAnError) {
  struct Case {
    const char* text;
    int error;
  };
  const Case cases[] = {{"", 9},       {"1201", 9}, {"1201_4711", 9}, {":", 13},          {"1201:", 13},
                        {":4711", 13}, {"a:1", 13}, {"32768:1", 6},   {"1:2147483648", 6}};
  for (const Case& each : cases) {
    EXPECT_EQ(test::ErrorNumberOf([&] { (void)ParseObjectKey(each.text, ':'); }), each.error) << each.text;
  }
}

}  // namespace
}  // namespace tessel
