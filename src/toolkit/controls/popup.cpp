// The box of a Popup: its entries, its measures, its look.
#include "toolkit/controls/popup.h"

#include <algorithm>

#include "core/memory.h"
#include "core/numbers.h"
#include "core/rects.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/windows/window_geometry.h"
#include "toolkit/controls/popup_list.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr Scaled kShadow{1}, kTextLeft{6}, kEntryRoom{4}, kBoxRoom{12}, kShadowInset{3};

struct Popup {
  PopupEntries entries;
  int16_t* itemWidths; // owned
  PopupRoom room;
  PopupCallback callback;
};

ViewClass* popupClass;

Popup* PopupOf(const View* view) {
  return static_cast<Popup*>(view->classData);
}

// ---- Entries -----------------------------------------------------------------------------------------------------

void FreeEntries(Popup* popup) {
  PopupEntries& entries = popup->entries;
  for (uint16_t i = 0; i < entries.count; ++i) FreeTextItem(&entries.items[i]);
  MemFree(entries.items);
  MemFree(entries.heights);
  MemFree(popup->itemWidths);
  popup->itemWidths = nullptr;
  entries = {};
}

void MeasureEntries(View* view) {
  Popup* popup = PopupOf(view);
  PopupEntries& entries = popup->entries;
  entries.widest = entries.tallest = 0;
  for (uint16_t i = 0; i < entries.count; ++i) {
    MeasureTextItem(view, &entries.items[i], &popup->itemWidths[i], &entries.heights[i]);
    entries.widest = std::max(entries.widest, popup->itemWidths[i]);
    entries.tallest = std::max(entries.tallest, entries.heights[i]);
  }
}

// ---- Measures ----------------------------------------------------------------------------------------------------

int16_t BoxWidth(const View* view) {
  return int16_t(view->width - kShadow);
}
int16_t BoxHeight(const View* view) {
  return int16_t(view->height - kShadow);
}

PopupRoom RoomFor(int16_t height) {
  const auto unit = int16_t(height / 6 + 1);
  const auto mark = int16_t(2 * unit / 6 * 4);
  // As high as that of a Label beside it.
  const int32_t textTop = (kEntryRoom + kShadow) / 2;
  return {int16_t(2 * unit), mark, int16_t(mark + Scaled(3)), int16_t(textTop)};
}

void SetSize(View* view, int16_t width, int16_t height) {
  Popup* popup = PopupOf(view);
  if (height == 0) height = int16_t(popup->entries.tallest + kEntryRoom + kShadow);
  popup->room = RoomFor(height);
  if (width == 0) {
    width = PinToShort(popup->room.arrowWidth + popup->entries.widest + kBoxRoom + popup->room.markRoom + kShadow);
  }
  ViewInvalidate(view);
  view->width = width;
  view->height = height;
  ViewInvalidate(view);
}

// ---- Look --------------------------------------------------------------------------------------------------------

void DrawArrow(const View* view) {
  const int32_t half = view->height / 12 + Scaled(2);
  const int32_t x = view->x + BoxWidth(view) - PopupOf(view)->room.arrowWidth / 2 - kEntryRoom;
  const int32_t top = view->y + BoxHeight(view) / 2 - half / 2;
  const Point corners[] = {
      {int16_t(top), int16_t(x - half)}, {int16_t(top), int16_t(x + half)}, {int16_t(top + half), int16_t(x)}};
  UseDrawState(DrawStateFill());
  SetForeColour(ViewIsEnabled(view) ? PrimaryColour(0) : ColourShadow());
  DrawPolygon(3, corners);
}

void DrawBox(const View* view) {
  const Rect box = RectOf(view->x, view->y, BoxWidth(view), BoxHeight(view));
  UseDrawState(DrawStateFill());
  SetForeColour(PrimaryColour(7));
  FillRect(box);
  SetForeColour(PrimaryColour(0));
  FrameRect(box);
  DrawHLine(int16_t(box.left + kShadowInset), box.bottom, box.right);
  DrawVLine(box.right, int16_t(box.top + kShadowInset), box.bottom);
}

// Where the selected entry stands in the box.
Rect EntryCell(const View* view) {
  const Popup* popup = PopupOf(view);
  const auto left = int16_t(view->x + popup->room.markRoom + kTextLeft);
  const int most = view->x + BoxWidth(view) - popup->room.arrowWidth - kEntryRoom;
  const auto right = int16_t(std::min(left + popup->itemWidths[popup->entries.selected], most));
  return {int16_t(view->y + popup->room.textTop), left, int16_t(view->y + BoxHeight(view)), right};
}

void Draw(View* view) {
  const PopupEntries& entries = PopupOf(view)->entries;
  DrawBox(view);
  DrawArrow(view);
  if (entries.count == 0) return;
  const Rect cell = EntryCell(view);
  const SavedClip clip = NarrowClip(cell.left, cell.top, cell.right, cell.bottom);
  DrawTextItem(view, entries.items[entries.selected], cell, cell, false);
  RestoreClip(clip);
}

// ---- The other operations ----------------------------------------------------------------------------------------

void Init(View* view) {
  auto* popup = static_cast<Popup*>(MemAlloc(sizeof(Popup)));
  *popup = {};
  view->classData = popup;
  SetSize(view, 0, 0);
}

void Destroy(View* view) {
  PopupListClose(view);
  FreeEntries(PopupOf(view));
  MemFree(view->classData);
  view->classData = nullptr;
}

void Choose(View* view, uint16_t index) {
  PopupSetSelected(view, index);
  if (const PopupCallback callback = PopupOf(view)->callback) callback(view, index);
}

void MouseDown(View* view, uint16_t flags, int16_t x, int16_t y) {
  const Popup* popup = PopupOf(view);
  if (PopupListIsOpen() || !ViewIsEnabled(view) || popup->entries.count == 0) return;
  PopupListOpen(view, &popup->entries, popup->room, flags, ToToolkitPoint(view->window, {y, x}), Choose);
}

} // namespace

const ViewClass* PopupClass() {
  return popupClass;
}

void PopupSetUpClass() {
  if (popupClass) return;
  popupClass = ClassNew();
  popupClass->init = Init;
  popupClass->destroy = Destroy;
  popupClass->draw = Draw;
  popupClass->mouseDown = MouseDown;
  popupClass->setSize = SetSize;
}

void PopupSetItems(View* view, uint16_t count, const char* const* texts) {
  PopupListClose(view);
  Popup* popup = PopupOf(view);
  FreeEntries(popup);
  PopupEntries& entries = popup->entries;
  entries.count = count;
  entries.items = static_cast<TextItem*>(MemAlloc(count * sizeof(TextItem)));
  entries.heights = static_cast<int16_t*>(MemAlloc(count * sizeof(int16_t)));
  popup->itemWidths = static_cast<int16_t*>(MemAlloc(count * sizeof(int16_t)));
  for (uint16_t i = 0; i < count; ++i) entries.items[i] = NewTextItem(texts[i]);
  MeasureEntries(view);
  ViewInvalidate(view);
}

void PopupSetSelected(View* view, uint16_t index) {
  PopupEntries& entries = PopupOf(view)->entries;
  if (index >= entries.count) return;
  entries.selected = index;
  ViewInvalidate(view);
}

uint16_t PopupSelected(const View* view) {
  return PopupOf(view)->entries.selected;
}

void PopupSetCallback(View* view, PopupCallback callback) {
  PopupOf(view)->callback = callback;
}

} // namespace framereel
