// Dialogs from their resources: from the units of a font to pixels.
#include "resources/dialogs.h"

#include "win32/controls/control_base.h"
#include "win32/dialogs/dialog.h"
#include "win32/drawing/contexts.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr DWORD DS_CENTER = 0x800; // of a resource

// Pixels of four units across and of eight down.
struct DialogUnits {
  int32_t across, down;

  int32_t X(int32_t units) const { return (units * across + 2) / 4; }
  int32_t Y(int32_t units) const { return (units * down + 4) / 8; }
};

DialogUnits UnitsOf(HFONT font) {
  HDC context = NewContext();
  ::SelectObject(context, font);
  TEXTMETRICA metrics = {};
  ::GetTextMetricsA(context, &metrics);
  FreeContext(context);
  return {metrics.tmAveCharWidth, metrics.tmHeight};
}

DialogPlan PlanOf(const DialogResource& resource) {
  DialogPlan plan = {};
  plan.title = resource.title;
  plan.style = resource.style & ~DS_CENTER;
  plan.centred = resource.style & DS_CENTER;
  plan.font = DialogFont(resource.font, resource.points);
  const DialogUnits units = UnitsOf(plan.font.get());
  plan.x = units.X(resource.left);
  plan.y = units.Y(resource.top);
  plan.width = units.X(resource.width);
  plan.height = units.Y(resource.height);
  for (const DialogItem& item : resource.items) {
    const PixelRect place = {units.X(item.left), units.Y(item.top), units.X(item.left + item.width),
                             units.Y(item.top + item.height)};
    plan.controls.push_back({item.id, item.className, item.text, place, item.style | WS_CHILD | WS_VISIBLE});
  }
  return plan;
}

} // namespace
} // namespace framereel

using namespace framereel;

intptr_t DialogBoxParamA(HINSTANCE, const char* name, HWND owner, DLGPROC procedure, LPARAM parameter) {
  const auto id = reinterpret_cast<uintptr_t>(name);
  const DialogResource* resource = id <= UINT16_MAX ? FindDialogResource(uint16_t(id)) : nullptr;
  if (!resource || !procedure || !DisplayOpen()) return -1;
  const HWND over = TopLevelOf(IsLive(owner) ? owner : nullptr);
  return RunDialog(PlanOf(*resource), over, {over}, procedure, parameter);
}
