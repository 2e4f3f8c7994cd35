#include "toolkit/widgets/accelerator.h"

#include "tests/support/stage.h"

namespace zel {
namespace {

using AcceleratorTest = StageTest;

TEST_F(AcceleratorTest, ActivatesForOneCombinationInTheNameOfItsTarget) {
  Accelerator accelerator;
  Patch target{{0, 0, 10, 10}};
  root.Add(&accelerator);
  root.names = {{&accelerator, "accelerator"}, {&target, "target"}};
  Watch({MSG_ACTIVATE});
  const auto press = [this](int scancode, int shifts) {
    key_shifts = shifts;
    const std::string used = root.HandleKey(0, scancode) ? "used; " : "";
    return used + root.Events();
  };
  for (const int scancode : {0, 47, 255}) EXPECT_EQ(press(scancode, 0), "");
  accelerator.Setup(KEY_F1, KB_ALT_FLAG, nullptr);
  EXPECT_EQ(press(KEY_F1, KB_ALT_FLAG), "used; accelerator: Activate");
  accelerator.Setup(KEY_F1, KB_ALT_FLAG, &target);
  EXPECT_EQ(press(KEY_F1, KB_ALT_FLAG | KB_CAPSLOCK_FLAG), "used; target: Activate");
  for (const int shifts : {KB_ALT_FLAG | KB_SHIFT_FLAG, 0}) EXPECT_EQ(press(KEY_F1, shifts), "");
  EXPECT_EQ(press(KEY_F2, KB_ALT_FLAG), "");
  target.Disable();
  EXPECT_EQ(press(KEY_F1, KB_ALT_FLAG), "");
}

}  // namespace
}  // namespace zel
