// The factories: class, content, size.
#include "app/factories.h"

#include "core/app_strings.h"
#include "core/memory.h"
#include "platform/drawing/standard_drawing.h"
#include "toolkit/controls/label.h"
#include "toolkit/controls/separator.h"
#include "toolkit/controls/text_pane.h"
#include "toolkit/views/box.h"
#include "toolkit/views/view.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr Scaled kRuleWidth{11}; // until it is stretched

View* WithData(View* view, void* data) {
  view->userData = reinterpret_cast<uintptr_t>(data);
  return view;
}

View* Fitted(View* view) {
  ViewFit(view);
  return view;
}

View* MakeRule(View* row) {
  View* rule = ViewCreate(SeparatorClass(), row);
  ViewResize(rule, kRuleWidth, 0);
  return rule;
}

} // namespace

View* MakeRow(View* parent, StackAlign align) {
  View* row = ViewCreate(StackClass(), parent);
  StackSetFrame(row, false);
  StackSetAlign(row, align);
  return Fitted(row);
}

View* MakeLabel(View* parent, const char* text) {
  View* label = ViewCreate(LabelClass(), parent);
  LabelSetFramed(label, false);
  SetLabelText(label, text);
  return label;
}

void SetLabelText(View* label, const char* text) {
  LabelSetValue(label, text);
  ViewFit(label);
}

View* MakeTextPane(View* parent, const char* text) {
  View* pane = ViewCreate(TextPaneClass(), parent);
  TextPaneSetFramed(pane, false);
  TextPaneSetText(pane, text);
  return Fitted(pane);
}

View* MakeButton(View* parent, const char* text, bool isDefault, PushButtonCallback callback, void* data) {
  View* button = WithData(ViewCreate(PushButtonClass(), parent), data);
  ViewSetDrawing(button, DrawStateDefault());
  PushButtonSetTitle(button, text);
  PushButtonSetDefault(button, isDefault);
  PushButtonSetCallback(button, callback);
  return Fitted(button);
}

View* MakeCheckBox(View* parent, const char* text, bool value, CheckBoxCallback callback, void* data) {
  View* box = WithData(ViewCreate(CheckBoxClass(), parent), data);
  CheckBoxSetLabel(box, text);
  CheckBoxSetValue(box, value, false);
  CheckBoxSetCallback(box, callback);
  return Fitted(box);
}

View* MakePopup(View* parent, uint16_t count, const uint16_t* strings, uint16_t selected, PopupCallback callback,
                void* data) {
  View* popup = WithData(ViewCreate(PopupClass(), parent), data);
  auto* texts = static_cast<const char**>(MemAlloc(count * sizeof(char*)));
  for (uint16_t i = 0; i < count; ++i) texts[i] = strings[i] == kNoEntry ? nullptr : AppString(strings[i]);
  PopupSetItems(popup, count, texts);
  MemFree(texts);
  PopupSetSelected(popup, selected);
  PopupSetCallback(popup, callback);
  return Fitted(popup);
}

View* MakeLabelledPopup(View* parent, const char* label, uint16_t count, const uint16_t* strings, uint16_t selected,
                        PopupCallback callback, void* data) {
  View* row = MakeRow(parent, kAlignCentre);
  if (label) MakeLabel(row, label);
  MakePopup(row, count, strings, selected, callback, data);
  return Fitted(row);
}

View* MakeGap(View* parent, int16_t size) {
  View* gap = ViewCreate(BoxClass(), parent);
  BoxSetFrame(gap, false);
  ViewResize(gap, size, size);
  return gap;
}

View* MakeHeading(View* parent, const char* text) {
  View* row = MakeRow(parent, kAlignCentre);
  MakeRule(row);
  MakeLabel(row, text);
  View* rule = MakeRule(row);
  ViewFit(row);
  return rule;
}

void StretchHeading(View* rule) {
  View* row = rule->parent;
  int16_t width = 0;
  StackInnerSize(row->parent, &width, nullptr);
  ViewResize(rule, int16_t(rule->width + width - row->width), 0);
  ViewFit(row);
}

} // namespace framereel
