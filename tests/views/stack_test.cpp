// Stacks: sizes and places of children, by one table of layouts, and what happens when children come, go and change.
#include "views/view_scene.h"

namespace framereel {
namespace {

class Stack : public ViewScene {
protected:
  // A Stack at 10, 20 with children "WIDTHxHEIGHT ...", and its options by name.
  View* NewStack(const std::string& options, const std::string& sizes) {
    script.Act("view s stack w 10 20");
    View* stack = Named("s");
    std::istringstream in(sizes), words(options);
    int width = 0, height = 0;
    for (char x = 0; in >> width >> x >> height;) {
      View* child = ViewCreate(BoxClass(), stack);
      BoxSetFrame(child, false);
      ViewResize(child, int16_t(width), int16_t(height));
    }
    for (std::string option; words >> option;) {
      if (option == "column") StackSetDirection(stack, false);
      if (option == "packed") StackSetPacked(stack, true);
      if (option == "framed") StackSetFrame(stack, true);
      if (option == "high") StackSetAlign(stack, kAlignStart);
      if (option != "ends") continue;
      StackSetOuterGaps(stack, false);
      StackSetMargins(stack, {5, 1, 7, 3});
      StackSetSpacing(stack, 9);
    }
    return stack;
  }
  static std::string Result(const View* stack) {
    std::string text = BoundsText(stack);
    for (uint16_t i = 0; i < StackChildCount(stack); ++i) (text += ' ') += BoundsText(StackChildAt(stack, i));
    return text;
  }
};

TEST_F(Stack, LaysItsChildrenOutByTheTable) {
  const char* three = "10x10 10x10 10x10";
  const struct {
    const char* options;
    int16_t width, height; // asked of the Stack; 0 is natural
    const char *children, *result;
  } layouts[] = {
      {"", 0, 0, "", "10,20+16x16"},
      {"", 0, 0, three, "10,20+34x10 10,20+10x10 22,20+10x10 34,20+10x10"},
      {"", 100, 20, three, "10,20+100x20 26,25+10x10 54,25+10x10 82,25+10x10"},
      {"ends", 0, 0, three, "10,20+60x14 15,21+10x10 40,21+10x10 60,21+10x10"}, // margins are room to share
      {"ends", 120, 20, three, "10,20+120x20 15,24+10x10 70,24+10x10 120,24+10x10"},
      {"ends", 50, 10, "10x10", "10,20+50x10 50,19+10x10"}, // one alone: at the far end
      {"", 50, 10, "10x10", "10,20+50x10 30,20+10x10"},
      {"packed", 100, 10, three, "10,20+100x10 10,20+10x10 22,20+10x10 34,20+10x10"},
      {"", 20, 10, three, "10,20+20x10 10,20+10x10 22,20+10x10 34,20+10x10"}, // too small: past the far end
      {"framed", 0, 0, three, "10,20+38x14 12,22+10x10 24,22+10x10 36,22+10x10"},
      {"framed high", 0, 30, "10x10", "10,20+14x30 12,22+10x10"},
      {"column", 0, 0, "30x4 10x6", "10,20+30x12 10,20+30x4 20,26+10x6"},
      {"column high", 40, 50, three, "10,20+40x50 10,24+10x10 10,40+10x10 10,56+10x10"},
  };
  for (const auto& layout : layouts) {
    View* stack = NewStack(layout.options, layout.children);
    ViewResize(stack, layout.width, layout.height);
    EXPECT_EQ(Result(stack), layout.result) << layout.options;
    // Shown or hidden, here or there, it comes out the same.
    script.Act("show s move s 50 60 move s 10 20");
    EXPECT_EQ(Result(stack), layout.result) << layout.options << ", shown";
    ViewDestroy(stack);
  }
}

TEST_F(Stack, FollowsItsChildrenAsTheyHideMoveAndGo) {
  View* row = NewStack("", "10x10 11x10 12x10");
  for (uint16_t i = 0; i < 3; ++i) views[std::to_string(i)] = StackChildAt(row, i);
  const std::pair<const char*, const char*> steps[] = {
      {"fit s show s", "10,20+37x10 10,20+10x10 22,20+11x10 35,20+12x10"},
      {"hide 1 fit s", "10,20+24x10 10,20+10x10 5000,5000+11x10 22,20+12x10"},
      {"show 1 fit s move 2 0 0", "10,20+37x10 10,20+12x10 24,20+10x10 36,20+11x10"}, // its new place in the order
      {"move 2 9 0", "10,20+37x10 10,20+10x10 22,20+11x10 35,20+12x10"},
      {"resize 0 20 10", "10,20+37x10 10,20+20x10 32,20+11x10 45,20+12x10"}, // it keeps its size until it is fitted
      {"destroy 0 fit s", "10,20+25x10 10,20+11x10 23,20+12x10"},
  };
  for (const auto& [words, result] : steps) {
    script.Act(words);
    EXPECT_EQ(Result(row), result) << words;
  }
}

} // namespace
} // namespace framereel
