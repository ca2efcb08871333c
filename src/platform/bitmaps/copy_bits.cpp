// Where the pixels of each kind of Port are read from, and the platform calls that copy them.
#include "platform/bitmaps/copy_bits.h"

#include <iterator>

#include "platform/drawing/ports.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/records/offscreen_record.h"
#include "platform/records/window_records.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

// The raster operation of each mode.
constexpr DWORD kOperations[] = {0, SRCCOPY, SRCAND, SRCCOPY, SRCPAINT, MERGEPAINT};

// A context to read a Port's pixels from, and how to give it back.
struct CopySource {
  HDC context;
  int originX, originY; // where the Port's 0, 0 lies in the context
  HGDIOBJ replaced;     // a bitmap to be selected again
  HWND window;          // the context's, if it is one
  bool painting;
};

CopySource OpenSource(const Port* source) {
  if (source == CurrentPort() && source->kind != kPortMainWindow)
    return {CurrentContext(), 0, 0, nullptr, nullptr, true};
  switch (source->kind) {
  case kPortScreen:
    return {ScreenContext(), 0, 0, nullptr, nullptr, false};
  case kPortMainWindow: {
    const auto* main = reinterpret_cast<const MainWindow*>(source);
    return {ScreenContext(), main->originX, main->originY, nullptr, nullptr, false};
  }
  case kPortChildWindow: {
    const HWND window = reinterpret_cast<const ChildWindow*>(source)->window;
    CopySource open = {nullptr, 0, 0, nullptr, window, false};
    open.context = TakeWindowContext(window, &open.painting);
    return open;
  }
  default: {
    const auto* offscreen = reinterpret_cast<const Offscreen*>(source);
    return {SourceContext(), 0, 0, ::SelectObject(SourceContext(), offscreen->bitmap), nullptr, false};
  }
  }
}

void CloseSource(const CopySource& source) {
  if (source.replaced) ::SelectObject(source.context, source.replaced);
  if (source.window) GiveWindowContextBack(source.window, source.context, source.painting);
}

} // namespace

void CopyBits(const Port* source, const Rect& from, const Rect& to, int mode) {
  if (mode < 0 || size_t(mode) >= std::size(kOperations)) return;
  const DWORD operation = kOperations[mode];
  const CopySource open = OpenSource(source);
  const int fromLeft = from.left + open.originX, fromTop = from.top + open.originY;
  const int fromWidth = from.right - from.left, fromHeight = from.bottom - from.top;
  const int toWidth = to.right - to.left, toHeight = to.bottom - to.top;
  if (fromWidth == toWidth && fromHeight == toHeight) {
    ::BitBlt(CurrentContext(), to.left, to.top, toWidth, toHeight, open.context, fromLeft, fromTop, operation);
  } else {
    ::StretchBlt(CurrentContext(), to.left, to.top, toWidth, toHeight, open.context, fromLeft, fromTop, fromWidth,
                 fromHeight, operation);
  }
  CloseSource(open);
}

} // namespace framereel
