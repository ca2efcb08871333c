// Stacks: sizes and places of children, by one table of layouts, and what happens when children come, go and change.
#include "toolkit/views/stack.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "toolkit/views/box.h"
#include "toolkit/views/view.h"
#include "views/toolkit_program.h"

namespace framereel {
namespace {

struct Layout {
  const char* what;
  void (*set)(View* stack);
  int16_t width, height;       // asked of the Stack at 10, 20; 0 is natural
  std::vector<Point> children; // heights and widths
  const char* result;          // the Stack's bounds, then its children's
};

std::string Result(const View* stack) {
  std::string text = BoundsText(stack);
  for (uint16_t i = 0; i < StackChildCount(stack); ++i) text += "; " + BoundsText(StackChildAt(stack, i));
  return text;
}

void Column(View* stack) {
  StackSetDirection(stack, false);
}
void Ends(View* stack) {
  StackSetOuterGaps(stack, false);
}
void Packed(View* stack) {
  StackSetPacked(stack, true);
}
void Framed(View* stack) {
  StackSetFrame(stack, true);
}

TEST(Stack, LaysItsChildrenOutByTheTable) {
  const std::vector<Point> three = {{10, 10}, {10, 10}, {10, 10}};
  const Layout layouts[] = {
      {"nothing in it", nullptr, 0, 0, {}, "10,20 16x16"},
      {"natural", nullptr, 0, 0, three, "10,20 34x10; 10,20 10x10; 22,20 10x10; 34,20 10x10"},
      {"free room in the middle of all gaps", nullptr, 100, 20, three,
       "10,20 100x20; 26,25 10x10; 54,25 10x10; 82,25 10x10"},
      {"free room between, the ends at the ends", Ends, 100, 10, three,
       "10,20 100x10; 10,20 10x10; 55,20 10x10; 100,20 10x10"},
      {"one child at the far end", Ends, 50, 10, {{10, 10}}, "10,20 50x10; 50,20 10x10"},
      {"one child in the middle", nullptr, 50, 10, {{10, 10}}, "10,20 50x10; 30,20 10x10"},
      {"packed", Packed, 100, 10, three, "10,20 100x10; 10,20 10x10; 22,20 10x10; 34,20 10x10"},
      {"too small: past the far end", nullptr, 20, 10, three, "10,20 20x10; 10,20 10x10; 22,20 10x10; 34,20 10x10"},
      {"framed", Framed, 0, 0, three, "10,20 38x14; 12,22 10x10; 24,22 10x10; 36,22 10x10"},
      {"framed at the end across",
       [](View* s) { Framed(s), StackSetAlign(s, kAlignEnd); },
       0,
       30,
       {{10, 10}},
       "10,20 14x30; 12,38 10x10"},
      {"framed at the start across",
       [](View* s) { Framed(s), StackSetAlign(s, kAlignStart); },
       0,
       30,
       {{10, 10}},
       "10,20 14x30; 12,22 10x10"},
      {"framed at the centre, whatever the frame", Framed, 0, 31, {{10, 10}}, "10,20 14x31; 12,30 10x10"},
      {"margins are room to share",
       [](View* s) {
         StackSetMargins(s, {5, 1, 7, 3});
       },
       0,
       0,
       {{10, 10}},
       "10,20 22x14; 21,21 10x10"},
      {"a column", Column, 0, 0, {{4, 30}, {6, 10}}, "10,20 30x12; 10,20 30x4; 20,26 10x6"},
      {"a column with its ends at the ends", [](View* s) { Column(s), Ends(s), StackSetAlign(s, kAlignStart); }, 40, 50,
       three, "10,20 40x50; 10,20 10x10; 10,40 10x10; 10,60 10x10"},
      {"another spacing",
       [](View* s) { StackSetSpacing(s, 9); },
       0,
       0,
       {{5, 10}, {5, 10}},
       "10,20 29x5; 10,20 10x5; 29,20 10x5"},
  };
  ToolkitProgram program;
  for (const Layout& layout : layouts) {
    View* stack = ViewCreateTop(StackClass(), program.window, 10, 20);
    StackSetFrame(stack, false);
    for (const Point& size : layout.children) {
      View* child = ViewCreate(BoxClass(), stack);
      BoxSetFrame(child, false);
      ViewResize(child, size.h, size.v);
    }
    if (layout.set) layout.set(stack);
    ViewResize(stack, layout.width, layout.height);
    EXPECT_EQ(Result(stack), layout.result) << layout.what;
    // Shown or hidden, here or there, it comes out the same.
    ViewShow(stack);
    ViewMove(stack, 50, 60);
    ViewMove(stack, 10, 20);
    EXPECT_EQ(Result(stack), layout.result) << layout.what << ", shown";
    ViewDestroy(stack);
  }
}

TEST(Stack, FollowsItsChildrenAsTheyHideMoveAndGo) {
  ToolkitProgram program;
  View* row = ViewCreateTop(StackClass(), program.window, 0, 0);
  StackSetFrame(row, false);
  View* child[3];
  for (int i = 0; i < 3; ++i) {
    child[i] = ViewCreate(BoxClass(), row);
    BoxSetFrame(child[i], false);
    ViewResize(child[i], int16_t(10 + i), 10);
  }
  ViewFit(row);
  ViewShow(row);
  EXPECT_EQ(Result(row), "0,0 37x10; 0,0 10x10; 12,0 11x10; 25,0 12x10");
  ViewHide(child[1]);
  ViewFit(row);
  EXPECT_EQ(Result(row), "0,0 24x10; 0,0 10x10; 5000,5000 11x10; 12,0 12x10");
  ViewShow(child[1]);
  ViewFit(row);
  ViewMove(child[2], 0, 0); // its new place in the order
  EXPECT_EQ(Result(row), "0,0 37x10; 0,0 12x10; 14,0 10x10; 26,0 11x10");
  ViewMove(child[2], 9, 0);
  EXPECT_EQ(StackChildAt(row, 2), child[2]);
  EXPECT_EQ(StackChildAt(row, 3), nullptr);
  ViewResize(child[0], 20, 10); // the Row keeps its size until it is fitted
  EXPECT_EQ(Result(row), "0,0 37x10; 0,0 20x10; 22,0 11x10; 35,0 12x10");
  ViewDestroy(child[0]);
  ViewFit(row);
  EXPECT_EQ(Result(row), "0,0 25x10; 0,0 11x10; 13,0 12x10");
  int16_t width = 0, height = 0;
  StackSetFrame(row, true);
  StackInnerSize(row, &width, nullptr);
  StackInnerSize(row, nullptr, &height);
  EXPECT_EQ(width, 21);
  EXPECT_EQ(height, 6);
}

TEST(Stack, IsFilledInsideItsFrame) {
  ToolkitProgram program;
  View* stack = ViewCreateTop(StackClass(), program.window, 5, 5);
  ViewResize(stack, 4, 3);
  StackSetBackground(stack, {0x8000, 0, 0});
  StackSetFilled(stack, true);
  ViewShow(stack);
  Settle();
  EXPECT_EQ(PictureOf(stack), "####\n#--#\n####\n");
  Colour colour = {};
  EXPECT_EQ((colour = ViewBackground(stack), colour.red), 0x8000);
}

} // namespace
} // namespace framereel
