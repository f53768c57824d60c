#include "device/ui/DialogSize.h"

#include <gtest/gtest.h>

namespace inspector::device::ui {
namespace {

TEST(DialogSizeTest, AWindowIsMovedIntoTheRoomThatThereIs) {
  const QRect room(10, 20, 480, 800);
  EXPECT_EQ(MovedInto(room, {30, 40, 400, 700}), QRect(30, 40, 400, 700));
  EXPECT_EQ(MovedInto(room, {-50, 900, 400, 700}), QRect(10, 120, 400, 700));
  EXPECT_EQ(MovedInto(room, {200, 0, 480, 1000}), room);
}

}  // namespace
}  // namespace inspector::device::ui
