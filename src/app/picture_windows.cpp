// The splash and About: a picture each, in a window of its size.
#include "app/picture_windows.h"

#include <initializer_list>

#include "area/ants.h"
#include "core/app_strings.h"
#include "core/numbers.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/display/monitor_room.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/pump/pump.h"
#include "platform/windows/child_window.h"
#include "platform/windows/window_geometry.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr uint16_t kAboutPicture = 515, kSplashPicture = 516; // of the bitmap resources
constexpr uint16_t kComment = 24, kFilesSay = 57;             // of AppString
constexpr int16_t kFirstLine = 178, kSecondLine = 191;        // baselines under what the picture of About says, in it
constexpr int32_t kStep = 6;                                  // pixels at most, on each axis
constexpr uint32_t kStepInterval = 40, kSplashStays = 1000;   // ms
constexpr uint32_t kFlags = kWindowLoosePopup | kWindowUnclamped;

Application& AppOf(const ChildWindow* window) {
  return *static_cast<Application*>(window->userData);
}

// Black on the panel's background, all over the window.
void DrawPicture(const ChildWindow* window, const Offscreen* picture) {
  UseDrawState(DrawStateFill());
  SetForeColour(PrimaryColour(0));
  SetBackColour(ColourMenu());
  CopyBits(&picture->port, OffscreenBounds(picture), ChildBounds(window), 1);
}

// Not shown yet.
void Open(Application& app, PictureWindow& window, uint16_t picture, uint32_t flags, WindowMethod paint) {
  if (!window.picture) window.picture = LoadOffscreen(picture);
  window.window = OpenChildWindow(nullptr, "", flags);
  window.window->userData = &app;
  window.window->background = ColourMenu();
  SetWindowMethod(window.window, &WindowMethods::paint, paint);
  const auto width = int16_t(window.picture->width * PictureScale());
  const auto height = int16_t(window.picture->height * PictureScale());
  SetMaxChildSize(window.window, width, height);
  SizeChildWindow(window.window, width, height);
}

void Close(PictureWindow& window) {
  if (window.timer) TimerCancel(window.timer);
  window.timer = nullptr;
  if (window.window) CloseChildWindow(window.window);
  window.window = nullptr;
}

// ---- The splash --------------------------------------------------------------------------------------------------

void PaintSplash(ChildWindow* window) {
  DrawPicture(window, AppOf(window).splash.picture);
}

void CloseSplash(void* application) {
  PictureWindow& splash = static_cast<Application*>(application)->splash;
  splash.timer = nullptr;
  Close(splash);
}

// ---- About -------------------------------------------------------------------------------------------------------

void DrawCentred(const ChildWindow* window, int16_t line, const char* text) {
  DrawText(Maximum(0, (window->geometry.clientWidth - MeasureText(text).width) / 2), line * PictureScale(), text);
}

void PaintAbout(ChildWindow* window) {
  const Application& app = AppOf(window);
  DrawPicture(window, app.about.picture);
  UseDrawState(DrawStateSecond());
  DrawCentred(window, kFirstLine, AppString(kFilesSay));
  char* comment = FormatNew(AppString(kComment), app.recorder.ownerName);
  DrawCentred(window, kSecondLine, comment);
  StrFree(comment);
}

void CloseAbout(Application& app) {
  Close(app.about);
  AntsShow(app.area);
}

void OnKey(ChildWindow* window, const KeyEvent&, int16_t, int16_t) {
  CloseAbout(AppOf(window));
}

void OnPress(ChildWindow* window, uint16_t, int16_t, int16_t) {
  CloseAbout(AppOf(window));
}

// The client's place in toolkit coordinates.
Point AboutTarget(const ChildWindow* window) {
  const MainWindow* main = TheMainWindow();
  const Rect free = RoomOfMonitor(main->window).free;
  const WindowGeometry& g = window->geometry;
  const int x = (free.left + free.right - g.outerWidth) / 2 + g.insetLeft - main->originX;
  const int y = free.top + (free.bottom - free.top - g.outerHeight) / 3 + g.insetTop - main->originY;
  return {PinToShort(y), PinToShort(x)};
}

void SlideAboutStep(void* application) {
  auto& app = *static_cast<Application*>(application);
  app.about.timer = nullptr;
  const Point target = AboutTarget(app.about.window);
  const WindowGeometry& g = app.about.window->geometry;
  const int32_t dx = PinValue(-kStep, target.h - g.clientLeft, kStep);
  const int32_t dy = PinValue(-kStep, target.v - g.clientTop, kStep);
  if (dx == 0 && dy == 0) return;
  PlaceChildWindow(app.about.window, PinToShort(g.clientLeft + dx), PinToShort(g.clientTop + dy));
  app.about.timer = TimerSchedule(SlideAboutStep, &app, kStepInterval);
}

} // namespace

void ShowSplash(Application& app) {
  if (app.splash.window) return;
  Open(app, app.splash, kSplashPicture, kFlags, PaintSplash);
  const MainWindow* main = TheMainWindow();
  const auto [monitor, free, isOnly] = RoomOfMonitor(nullptr);
  const WindowGeometry& g = app.splash.window->geometry;
  const int x = monitor.left + (free.right - free.left - g.clientWidth) / 2;
  const int y = monitor.top + (free.bottom - free.top - g.clientHeight) / 3;
  PlaceChildWindow(app.splash.window, PinToShort(x - main->originX), PinToShort(y - main->originY));
  ShowChildWindow(app.splash.window);
  FlushPaints();
}

void CloseSplashSoon(void* application) {
  PictureWindow& splash = static_cast<Application*>(application)->splash;
  if (splash.window && !splash.timer) splash.timer = TimerSchedule(CloseSplash, application, kSplashStays);
}

void ShowAbout(Application& app) {
  if (app.about.window) return;
  AntsHide(app.area);
  Open(app, app.about, kAboutPicture, kFlags | kWindowModal, PaintAbout);
  ChildWindow* window = app.about.window;
  SetWindowMethod(window, &WindowMethods::keyDown, OnKey);
  SetWindowMethod(window, &WindowMethods::mouseDown, OnPress);
  // From beyond the left edge of the monitor.
  const MainWindow* main = TheMainWindow();
  const int left = RoomOfMonitor(main->window).monitor.left - window->geometry.clientWidth;
  PlaceChildWindow(window, PinToShort(left - main->originX), AboutTarget(window).v);
  ShowChildWindow(window);
  app.about.timer = TimerSchedule(SlideAboutStep, &app, 0);
}

void PictureWindowsShutDown(Application& app) {
  for (PictureWindow* window : {&app.splash, &app.about}) {
    Close(*window);
    if (window->picture) FreeOffscreen(window->picture);
    window->picture = nullptr;
  }
}

} // namespace framereel
