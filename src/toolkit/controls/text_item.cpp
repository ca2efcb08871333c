// Items are measured and drawn with the DrawState of the View that shows them.
#include "toolkit/controls/text_item.h"

#include "core/numbers.h"
#include "core/strings.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "toolkit/views/view.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr Scaled kDividerHeight{3};

} // namespace

TextItem NewTextItem(const char* text) {
  return {text ? StrDup(text) : nullptr, 0, 0};
}

void FreeTextItem(TextItem* item) {
  StrFree(item->text);
  *item = {};
}

void MeasureTextItem(View* view, TextItem* item, int16_t* width, int16_t* height) {
  *width = 0;
  *height = kDividerHeight;
  if (!item->text) return;
  ViewMakeCurrent(view);
  const TextMeasure measure = MeasureText(item->text);
  *width = PinToShort(measure.leftOverhang + measure.width);
  *height = PinToShort(measure.ascent + measure.descent);
  item->x = PinToShort(measure.leftOverhang);
  item->y = PinToShort(measure.ascent);
}

void DrawTextItem(View* view, const TextItem& item, const Rect& cell, const Rect& clip, bool invert) {
  UseDrawState(view->drawing);
  if (invert) SetForeColour(PrimaryColour(7));
  if (!item.text) {
    const auto middle = int16_t((cell.top + cell.bottom) / 2);
    DrawHLine(clip.left, middle, int16_t(clip.right - 1));
  } else {
    (ViewIsEnabled(view) ? DrawText : DrawGreyText)(cell.left + item.x, cell.top + item.y, item.text);
  }
  if (invert) SetForeColour(PrimaryColour(0));
}

} // namespace framereel
