// The panel's controls from top to bottom, what each of them does, and what the recorder and the area show in it.
#include "app/panel.h"

#include <initializer_list>

#include "app/factories.h"
#include "app/picture_windows.h"
#include "app/slide_frame.h"
#include "area/ants.h"
#include "area/area.h"
#include "area/readouts.h"
#include "area/selection.h"
#include "core/app_strings.h"
#include "core/numbers.h"
#include "platform/display/monitor_room.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/records/window_records.h"
#include "platform/windows/child_window.h"
#include "platform/windows/window_geometry.h"
#include "recorder/control/recording_control.h"
#include "recorder/engine/frame_rates.h"
#include "recorder/engine/recording_scale.h"
#include "toolkit/controls/separator.h"
#include "toolkit/controls/text_pane.h"
#include "toolkit/views/view.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr Scaled kMargin{3};                        // between the controls and the window's edges
constexpr Scaled kEdgeGap{5};                       // of the resting place to the edges of the usable screen
constexpr Scaled kMessageGap{13}, kNoMessageGap{4}; // above and below the message
constexpr Scaled kSectionGap{16};
constexpr uint16_t kSelectArea = 45, kSelectWindow = 90;   // of AppString
constexpr uint16_t kRecordingSizeStrings[] = {87, 88, 89}; // by recordingSize

struct OptionText {
  uint16_t string;
  bool RecordingOptions::*option;
};
constexpr OptionText kOptionTexts[kOptionBoxCount] = {
    {49, &RecordingOptions::interframeTransparency},
    {50, &RecordingOptions::recordTimingInfo},
    {51, &RecordingOptions::loop},
    {53, &RecordingOptions::overlayBorder},
    {66, &RecordingOptions::overlayCursor},
    {82, &RecordingOptions::explorerCompatible},
};

// ---- What the controls do ----------------------------------------------------------------------------------------

Application& AppOf(const View* view) {
  return *reinterpret_cast<Application*>(view->userData);
}

void OptionToggled(View* view, bool value) {
  const auto* box = reinterpret_cast<const OptionBox*>(view->userData);
  *box->option = value;
  SettingsSave(box->app->settings);
}

void FrameRateChosen(View* view, uint16_t index) {
  Application& app = AppOf(view);
  app.options.frameDelay = FrameRateTable[index].delay;
  SettingsSave(app.settings);
}

void RecordingSizeChosen(View* view, uint16_t index) {
  Application& app = AppOf(view);
  app.options.recordingSize = index;
  AreaRecompute(app.area);
  ShowAreaReadouts(app.area);
  SettingsSave(app.settings);
}

void ShowAreaToggled(View* view, bool value) {
  (value ? AntsShow : AntsHide)(AppOf(view).area);
}

// ---- The controls ------------------------------------------------------------------------------------------------

// The program is nothing without its panel: the keys that close a window do not close this one.
bool StaysOpen(ChildWindow*) {
  return false;
}

void OpenPanelWindow(Panel& panel) {
  panel.window = OpenChildWindow(nullptr, "", kWindowFilled | kWindowUnclamped);
  panel.window->background = ColourMenu();
  SetWindowMethod(panel.window, &WindowMethods::mayClose, StaysOpen);
  panel.root = ViewCreateTop(StackClass(), panel.window, kMargin, kMargin);
  StackSetDirection(panel.root, false);
  StackSetFrame(panel.root, false);
  StackSetAlign(panel.root, kAlignStart);
}

void MakeActions(Application& app) {
  Panel& panel = app.panel;
  View* row = MakeRow(panel.root, kAlignCentre);
  panel.startButton = MakeButton(
      row, AppString(40), false, [](View* view) { RecorderStart(AppOf(view).recorder); }, &app);
  panel.grabButton = MakeButton(
      row, AppString(41), false, [](View* view) { RecorderGrab(AppOf(view).recorder); }, &app);
  panel.stopButton = MakeButton(
      row, AppString(42), false, [](View* view) { RecorderStop(AppOf(view).recorder); }, &app);
  ViewDisable(panel.stopButton);
  ViewFit(row);
  panel.statusLine = MakeLabel(panel.root, "");
}

void MakeMessageBlock(Panel& panel) {
  panel.messageGapAbove = MakeGap(panel.root, kNoMessageGap);
  panel.messageText = MakeTextPane(panel.root, "");
  ViewResize(panel.messageText, 1, 1);
  panel.messageGapBelow = MakeGap(panel.root, kNoMessageGap);
}

// Answers the closing rule of the heading.
View* MakeAreaSection(Application& app) {
  Panel& panel = app.panel;
  View* rule = MakeHeading(panel.root, AppString(43));
  panel.sizeLabel = MakeLabel(panel.root, "");
  panel.topLeftLabel = MakeLabel(panel.root, "");
  View* row = MakeRow(panel.root, kAlignCentre);
  panel.showAreaBox = MakeCheckBox(row, AppString(44), false, ShowAreaToggled, &app);
  // Made with the longer of its texts, so that it has room for both.
  panel.selectButton = MakeButton(
      row, AppString(kSelectWindow), false, [](View* view) { SelectionBegin(AppOf(view).area); }, &app);
  PushButtonSetTitle(panel.selectButton, AppString(kSelectArea));
  ViewFit(row);
  MakeButton(
      panel.root, AppString(46), false, [](View* view) { RefreshScreen(AppOf(view).area); }, &app);
  return rule;
}

View* MakeFrameRatePopup(Application& app) {
  uint16_t strings[kFrameRateCount];
  for (uint16_t i = 0; i < kFrameRateCount; ++i) strings[i] = FrameRateTable[i].text;
  return MakeLabelledPopup(app.panel.root, AppString(48), kFrameRateCount, strings,
                           FrameRateIndex(app.options.frameDelay), FrameRateChosen, &app);
}

View* MakeOptionsSection(Application& app) {
  Panel& panel = app.panel;
  View* rule = MakeHeading(panel.root, AppString(47));
  panel.frameRatePopup = MakeFrameRatePopup(app);
  for (int i = 0; i < kOptionBoxCount; ++i) {
    OptionBox& box = panel.options[i];
    box = {&app, &(app.options.*kOptionTexts[i].option), nullptr};
    box.view = MakeCheckBox(panel.root, AppString(kOptionTexts[i].string), *box.option, OptionToggled, &box);
  }
  panel.recordingSizePopup = MakeLabelledPopup(panel.root, AppString(86), 3, kRecordingSizeStrings,
                                               app.options.recordingSize, RecordingSizeChosen, &app);
  return rule;
}

void MakeControls(Application& app) {
  Panel& panel = app.panel;
  View* top = ViewCreate(SeparatorClass(), panel.root);
  SeparatorSetKind(top, 2);
  ViewFit(top);
  MakeActions(app);
  MakeMessageBlock(panel);
  View* areaRule = MakeAreaSection(app);
  MakeGap(panel.root, kSectionGap);
  View* optionsRule = MakeOptionsSection(app);
  ViewFit(panel.root);
  int16_t width = 0;
  StackInnerSize(panel.root, &width, nullptr);
  ViewResize(top, width, 0);
  StretchHeading(areaRule);
  StretchHeading(optionsRule);
  ViewShow(panel.root);
}

// ---- Its place ---------------------------------------------------------------------------------------------------

// Where the free part of the primary monitor ends, by its width.
int EndOfRoom(const MonitorRoom& room) {
  return room.monitor.left + room.free.right - room.free.left;
}

// Its top right corner, with the panel's frame beyond the edge that the user sees.
Point RestingPlace(void* application) {
  const MonitorRoom room = RoomOfMonitor(nullptr);
  const WindowGeometry& g = static_cast<Application*>(application)->panel.window->geometry;
  const int x = EndOfRoom(room) - g.clientWidth - g.insetRight - kEdgeGap - TheMainWindow()->geometry.insetLeft;
  return {PinToShort(room.free.top + kEdgeGap), PinToShort(x)};
}

void SlideIn(Application& app) {
  MainWindow* main = TheMainWindow();
  MoveMainWindow(main, PinToShort(EndOfRoom(RoomOfMonitor(nullptr)) + main->geometry.insetLeft),
                 PinToShort(RestingPlace(&app).v + main->geometry.insetTop));
  SlideFrameStart(RestingPlace, CloseSplashSoon, &app);
}

// ---- What is shown in it -----------------------------------------------------------------------------------------

// The message's height follows from its text, and its gaps from whether there is one.
void SetMessage(Panel& panel, const char* text) {
  const bool shows = *text;
  const int16_t gap = shows ? kMessageGap : kNoMessageGap;
  int16_t width = 0;
  StackInnerSize(panel.root, &width, nullptr);
  TextPaneSetText(panel.messageText, text);
  ViewResize(panel.messageGapAbove, 1, gap);
  if (shows) {
    ViewResize(panel.messageText, width, 0);
  } else {
    ViewResize(panel.messageText, 1, 1);
  }
  ViewResize(panel.messageGapBelow, 1, gap);
  PanelFit(panel);
}

Panel& PanelOf(void* owner) {
  return static_cast<Application*>(owner)->panel;
}

void ShowStatus(void* owner, const char* text) {
  SetLabelText(PanelOf(owner).statusLine, text);
}

void PanelShowMessage(void* owner, const char* text) {
  SetMessage(PanelOf(owner), text);
}

void PanelHideMessage(void* owner) {
  SetMessage(PanelOf(owner), "");
}

void EnableButtons(void* owner, const RecordButtons& buttons) {
  const Panel& panel = PanelOf(owner);
  ViewSetEnabled(panel.startButton, buttons.start);
  ViewSetEnabled(panel.grabButton, buttons.grab);
  ViewSetEnabled(panel.stopButton, buttons.stop);
}

// The animation has its area now: a selection that is still open ends with what it has, and none begins.
void HoldArea(Application& app) {
  if (!app.area.backdrop) return;
  SelectionEnd(app.area);
  SettingsSave(app.settings);
}

void EnableFrozenOptions(void* owner, bool enabled) {
  if (!enabled) HoldArea(*static_cast<Application*>(owner));
  const Panel& panel = PanelOf(owner);
  for (View* view : {panel.selectButton, panel.options[kLoopBox].view, panel.options[kBorderBox].view,
                     panel.options[kCursorBox].view, panel.recordingSizePopup}) {
    ViewSetEnabled(view, enabled);
  }
}

void ShowReadouts(void* owner, const char* size, const char* topLeft) {
  SetLabelText(PanelOf(owner).sizeLabel, size);
  SetLabelText(PanelOf(owner).topLeftLabel, topLeft);
}

void OfferWindowMode(void* owner, bool windowMode) {
  PushButtonSetTitle(PanelOf(owner).selectButton, AppString(windowMode ? kSelectWindow : kSelectArea));
}

} // namespace

void BuildPanel(Application& app) {
  const MainWindow* main = TheMainWindow();
  OpenPanelWindow(app.panel);
  MakeControls(app);
  SetMainMinimumSize(nullptr, 1, 1);
  PanelFit(app.panel);
  // Client area on client area, so that nothing is seen of the panel's own frame.
  PlaceChildWindow(app.panel.window, main->geometry.insetLeft, main->geometry.insetTop);
  ShowChildWindow(app.panel.window);
  SlideIn(app);
}

void PanelFit(Panel& panel) {
  ViewFit(panel.root);
  const auto width = int16_t(panel.root->width + 2 * kMargin), height = int16_t(panel.root->height + 2 * kMargin);
  SizeChildWindow(panel.window, width, height);
  // Twice: a frame may change with the size, and its thickness is known only afterwards.
  SetMainClientSize(nullptr, width, height);
  SetMainClientSize(nullptr, width, height);
}

RecorderPanel PanelForRecorder(Application& app) {
  RecorderPanel panel;
  panel.owner = &app;
  panel.setStatus = ShowStatus;
  panel.showMessage = PanelShowMessage;
  panel.hideMessage = PanelHideMessage;
  panel.enableButtons = EnableButtons;
  panel.enableOptions = EnableFrozenOptions;
  return panel;
}

AreaPanel PanelForArea(Application& app) {
  AreaPanel panel;
  panel.owner = &app;
  panel.window = app.panel.window;
  panel.sizeLabel = app.panel.sizeLabel;
  panel.topLeftLabel = app.panel.topLeftLabel;
  panel.setReadouts = ShowReadouts;
  panel.setWindowMode = OfferWindowMode;
  panel.stopSlide = [](void*) { SlideFrameCancel(); };
  panel.saveSettings = [](void* owner) { SettingsSave(static_cast<Application*>(owner)->settings); };
  return panel;
}

} // namespace framereel
