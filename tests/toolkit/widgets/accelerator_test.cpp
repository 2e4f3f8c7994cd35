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
  const auto expect = [&](int scancode, int shifts, const char* events) {
    key_shifts = shifts;
    EXPECT_EQ(root.HandleKey(0, scancode), *events != '\0');
    Expect(events);
  };
  for (const int scancode : {0, 47, 255}) expect(scancode, 0, "");
  accelerator.Setup(KEY_F1, KB_ALT_FLAG, nullptr);
  expect(KEY_F1, KB_ALT_FLAG, "accelerator: Activate");
  accelerator.Setup(KEY_F1, KB_ALT_FLAG, &target);
  expect(KEY_F1, KB_ALT_FLAG | KB_CAPSLOCK_FLAG | KB_NUMLOCK_FLAG, "target: Activate");
  expect(KEY_F1, KB_ALT_FLAG | KB_SHIFT_FLAG, "");
  expect(KEY_F1, 0, "");
  expect(KEY_F2, KB_ALT_FLAG, "");
  target.Disable();
  expect(KEY_F1, KB_ALT_FLAG, "");
}

}  // namespace
}  // namespace zel
