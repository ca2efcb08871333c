// The order of starting up, with windows.
#include "platform/platform_init.h"

#include "core/memory.h"
#include "core/toolkit_init.h"
#include "platform/activation.h"
#include "platform/app_callbacks.h"
#include "platform/bitmaps.h"
#include "platform/child_window.h"
#include "platform/cursor.h"
#include "platform/display_caps.h"
#include "platform/drawing.h"
#include "platform/input_keys.h"
#include "platform/input_mouse.h"
#include "platform/main_window.h"
#include "platform/modal.h"
#include "platform/painting.h"
#include "platform/ports.h"
#include "platform/procedures.h"
#include "platform/pump.h"
#include "platform/standard_drawing.h"
#include "platform/usable_area.h"
#include "platform/view_record.h"
#include "platform/window_classes.h"
#include "win32/pixels/display.h"

namespace framereel {
namespace {

bool started;

void StartWindowState() {
  PumpStartUp();
  ActivationStartUp();
  ModalStartUp();
  MouseStartUp();
  KeysStartUp();
  CursorStartUp();
  ChildWindowsStartUp();
}

} // namespace

bool PlatformInit(HINSTANCE instance, HINSTANCE previousInstance, const char*, int showCommand) {
  if (started) return true;
  ToolkitInit();
  if (!PortsStartUp()) {
    DisplayClose(); // it may have been lost just after it was opened
    return false;
  }
  started = true;
  ForgetDisplayCaps();
  UsableAreaStartUp();
  StartHandlingMessages();
  if (!previousInstance) RegisterWindowClasses(instance);
  StartWindowState();
  DrawingStartUp();
  BitmapsStartUp();
  PaintingStartUp();
  if (!CreateMainWindow(instance, showCommand)) {
    PlatformShutdown();
    return false;
  }
  StandardDrawingStartUp();
  TheViewCalls().setUpClasses();
  return true;
}

void PlatformShutdown() {
  if (!started) return;
  StopHandlingMessages();
  TempScopeBegin(); // for the Views, which live on until an event has been dealt with
  ChildWindowsShutDown();
  TempScopeEnd();
  BitmapsShutDown();
  PaintingShutDown();
  DestroyMainWindow();
  StandardDrawingShutDown();
  PortsShutDown();
  DrawingShutDown();
  DisplayClose();
  for (uint16_t i = 0; i <= kQuitHandler; ++i) SetAppCallback(i, nullptr, nullptr);
  started = false;
}

} // namespace framereel
