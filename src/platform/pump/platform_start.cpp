// The order of starting up with windows.
#include "platform/pump/platform_start.h"

#include "core/temporary_blocks.h"
#include "core/toolkit_init.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/controls/edit_session.h"
#include "platform/dialogs/file_dialogs.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/input/key_events.h"
#include "platform/input/keys.h"
#include "platform/input/mouse.h"
#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_blocking.h"
#include "platform/menus/menu_commands.h"
#include "platform/menus/menus.h"
#include "platform/pump/app_callbacks.h"
#include "platform/pump/child_procedure.h"
#include "platform/pump/main_procedure.h"
#include "platform/pump/message_table.h"
#include "platform/pump/pump.h"
#include "platform/records/view_record.h"
#include "platform/windows/active_window.h"
#include "platform/windows/child_window.h"
#include "platform/windows/cursor_shape.h"
#include "platform/windows/main_window.h"
#include "platform/windows/modal.h"
#include "platform/windows/mouse_targets.h"
#include "platform/windows/paint_messages.h"
#include "platform/windows/window_classes.h"
#include "win32/pixels/display.h"

namespace framereel {
namespace {

bool started;

void StartWindowState() {
  PumpStartUp();
  ActiveWindowStartUp();
  ModalStartUp();
  MouseTargetsStartUp();
  MouseStartUp();
  KeyEventsStartUp();
  KeysStartUp();
  CursorShapeStartUp();
  MenusStartUp();
  MenuBlockingStartUp();
  MenuCommandsStartUp();
  EditMenuStartUp();
  EditSessionStartUp();
  FileDialogsStartUp();
  ChildWindowsStartUp();
}

} // namespace

bool PlatformInit(HINSTANCE instance, HINSTANCE previousInstance, const char*, int showCommand) {
  if (started) return true;
  ToolkitInit();
  if (!SharedContextsStartUp()) {
    DisplayClose(); // it may have been lost just after it was opened
    return false;
  }
  started = true;
  ForgetDisplayCaps();
  StartHandlingMessages();
  if (!previousInstance) RegisterWindowClasses(instance, MainWindowProcedure, ChildWindowProcedure);
  StartWindowState();
  DrawingStartUp();
  OffscreensStartUp();
  PaintStartUp();
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
  MenusShutDown();
  EditMenuShutDown();
  OffscreensShutDown();
  PaintShutDown();
  DestroyMainWindow();
  StandardDrawingShutDown();
  SharedContextsShutDown();
  DrawingShutDown();
  DisplayClose();
  for (uint16_t i = 0; i <= kQuitHandler; ++i) SetAppCallback(i, nullptr, nullptr);
  SetSessionHandler(nullptr, nullptr);
  started = false;
}

} // namespace framereel
