// The interpretation pane.
#include "tests/windows/interpretation/pane_fixture.h"
namespace {
using Pane = kx::test::InterpretationPane;
TEST_F(Pane, Opens) {
    EXPECT_NE(Open(), nullptr);
}
}  // namespace
