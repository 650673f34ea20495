#include "ui/shared/byte_text_box.h"

#include <gtest/gtest.h>

namespace tessaril {
namespace {

TEST(ByteTextBox, GivesBackWhatItWasGiven) {
  ByteTextBox box;
  box.SetBytes("abc");
  EXPECT_EQ(box.Bytes(), "abc");
}

}  // namespace
}  // namespace tessaril
