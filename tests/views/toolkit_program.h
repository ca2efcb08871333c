// A window to put Views in, and what a test looks at there.
#pragma once

#include <cstdint>
#include <string>

#include "platform/records/view_record.h"
#include "support/window_program.h"

namespace framereel {

// A program with one shown window of 300 by 200 pixels, all of it to be seen.
class ToolkitProgram {
public:
  explicit ToolkitProgram(int32_t depth = 24);

private:
  int platformIsUp;
  WindowProgram program;

public:
  ChildWindow* window;
};

// "x,y width x height" of a View.
std::string BoundsText(const View* view);
// A View's pixels on the screen as rows of '#' for black, '.' for white, '-' for anything else.
std::string PictureOf(const View* view);

} // namespace framereel
