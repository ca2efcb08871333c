// Alerts: their Views, where these stand, and how the answer comes back.
#include "toolkit/controls/alert.h"

#include <algorithm>

#include "core/memory.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/pump/pump.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"
#include "platform/windows/window_geometry.h"
#include "toolkit/controls/picture_view.h"
#include "toolkit/controls/push_button.h"
#include "toolkit/controls/text_pane.h"
#include "toolkit/views/view.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr Scaled kMargins{28}; // across, around picture and text
constexpr Scaled kTextGap{18}, kEdge{4}, kButtonRoom{8}, kPairRoom{24};

struct AlertState {
  ChildWindow* window;
  void (*answered)(void* argument, bool first);
  void* argument;
  View *picture, *text, *first, *second; // the last null without a second button
};

// ---- The answer --------------------------------------------------------------------------------------------------

void Pressed(View* button) {
  auto* state = reinterpret_cast<AlertState*>(button->userData);
  const bool first = button == state->first;
  CloseChildWindow(state->window);
  if (state->answered) state->answered(state->argument, first);
  MemFree(state);
}

void KeyDown(ChildWindow* window, const KeyEvent& event, int16_t, int16_t) {
  const auto* state = static_cast<const AlertState*>(window->userData);
  if (event.unshifted == kKeyReturn) {
    PushButtonPress(state->first);
  } else if (event.unshifted == kKeyEscape && state->second) {
    PushButtonPress(state->second);
  }
}

// ---- Its Views ---------------------------------------------------------------------------------------------------

View* MakeButton(AlertState* state, const char* title, bool isDefault) {
  View* button = ViewCreateTop(PushButtonClass(), state->window, 0, 0);
  PushButtonSetTitle(button, title);
  PushButtonSetDefault(button, isDefault);
  PushButtonSetCallback(button, Pressed);
  ViewFit(button);
  button->userData = reinterpret_cast<uintptr_t>(state);
  return button;
}

void MakeViews(AlertState* state, uint16_t picture, const char* message, const char* first, const char* second) {
  state->picture = ViewCreateTop(PictureViewClass(), state->window, 0, 0);
  PictureViewSetBitmap(state->picture, picture);
  ViewFit(state->picture);
  state->text = ViewCreateTop(TextPaneClass(), state->window, 0, 0);
  ViewSetDrawing(state->text, DrawStateSecond());
  TextPaneSetFramed(state->text, false);
  TextPaneSetText(state->text, message);
  ViewFit(state->text);
  state->first = MakeButton(state, first, true);
  state->second = second ? MakeButton(state, second, false) : nullptr;
}

// ---- Their places ------------------------------------------------------------------------------------------------

int PictureRoom(const AlertState* state) {
  return state->picture->width + kMargins;
}

int LeastText(const AlertState* state) {
  return state->picture->height + kEdge;
}

int16_t WindowWidth(const AlertState* state) {
  const int text = state->text->width, room = PictureRoom(state);
  if (!state->second) return int16_t(std::max<int>(state->first->width, text) + room);
  return int16_t(std::max(state->first->width + state->second->width + kPairRoom, text + room));
}

void PlaceTwoButtons(const AlertState* state, int16_t width, int16_t height) {
  View *first = state->first, *second = state->second, *picture = state->picture;
  const int third = (width - first->width - second->width) / 3, bottom = height - kEdge;
  ViewMove(picture, kEdge, int16_t((height - first->height - picture->height - kButtonRoom) / 2));
  ViewMove(second, int16_t(third), int16_t(bottom - (first->height + second->height) / 2));
  ViewMove(first, int16_t(width - third - first->width), int16_t(bottom - first->height));
}

void PlaceOneButton(const AlertState* state, int16_t width, int16_t height) {
  View *first = state->first, *picture = state->picture;
  ViewMove(picture, kEdge, int16_t((height - picture->height) / 3));
  ViewMove(first, int16_t((width + LeastText(state) - first->width) / 2), int16_t(height - kEdge - first->height));
}

void LayOut(const AlertState* state) {
  const int16_t width = WindowWidth(state);
  const auto height =
      int16_t(std::max<int>(state->text->height, LeastText(state)) + state->first->height + kButtonRoom);
  SizeChildWindow(state->window, width, height);
  const int textLeft = state->picture->width + kTextGap + (width - PictureRoom(state) - state->text->width) / 2;
  ViewMove(state->text, int16_t(textLeft), kEdge);
  (state->second ? PlaceTwoButtons : PlaceOneButton)(state, width, height);
  for (View* view : {state->text, state->picture, state->first, state->second}) {
    if (view) ViewShow(view);
  }
}

void StoreAnswer(void* answer, bool first) {
  *static_cast<bool*>(answer) = first;
}

} // namespace

ChildWindow* AlertBuild(MainWindow* parent, const char* title, uint16_t picture, const char* message, const char* first,
                        const char* second, void (*answered)(void* argument, bool first), void* argument) {
  auto* state = static_cast<AlertState*>(MemAlloc(sizeof(AlertState)));
  if (!state) return nullptr;
  *state = {};
  state->answered = answered;
  state->argument = argument;
  ChildWindow* window = OpenChildWindow(parent, title ? title : "", kWindowModal | kWindowFilled | kWindowUnclamped);
  if (!window) {
    MemFree(state);
    return nullptr;
  }
  state->window = window;
  window->userData = state;
  window->background = ViewBackground(nullptr);
  SetWindowMethod(window, &WindowMethods::keyDown, KeyDown);
  MakeViews(state, picture, message, first, second);
  LayOut(state);
  PlaceChildWindowUpper(window);
  return window;
}

bool AlertAsk(MainWindow* parent, const char* title, uint16_t picture, const char* message, const char* first,
              const char* second) {
  bool answer = false;
  ChildWindow* window = AlertBuild(parent, title, picture, message, first, second, StoreAnswer, &answer);
  if (!window) return answer;
  RestoreMainWindow(); // over a minimised program nobody would see it
  ShowChildWindow(window);
  RunModalLoop(window, false);
  // All loops have been ended around it.
  if (!(window->flags & kWindowClosed)) {
    void* state = window->userData;
    CloseChildWindow(window);
    MemFree(state);
  }
  return answer;
}

} // namespace framereel
