// Stack: the container that lays its children out, as a Row, side by side, or as a Column, one below the other. Its
// natural size follows from its children.
//
// It never grows by itself: who has changed a child fits the Stack, from the inside out, and then what holds it. A
// ViewMove of a child changes its place in the order: x of a Row, y of a Column, is its new index.
#pragma once

#include "platform/records/colour.h"
#include "platform/records/view_record.h"

namespace framereel {

// Where children stand on the axis across the direction.
enum StackAlign : uint16_t { kAlignStart = 1, kAlignCentre = 2, kAlignEnd = 3 };

struct StackMargins {
  int16_t left, top, right, bottom; // pixels
};

const ViewClass* StackClass();
void StackSetUpClass(); // once, at start-up

// A new Stack is a Row, aligned at the centre, framed, 2 pixels between neighbours, with what is free shared out on all
// sides. These lay it out anew at once; its size stays.
void StackSetDirection(View* view, bool isRow);
void StackSetAlign(View* view, StackAlign align);
void StackSetFrame(View* view, bool framed);
void StackSetSpacing(View* view, int16_t pixels);
void StackSetPacked(View* view, bool packed);       // nothing that is free is shared out
void StackSetOuterGaps(View* view, bool outerGaps); // without them the first and the last child stand at the ends
void StackSetMargins(View* view, const StackMargins& margins); // from the next arrangement on
void StackSetBackground(View* view, const Colour& colour);
void StackSetFilled(View* view, bool filled);

// What is inside of the frame; a null `width` or `height` is passed over.
void StackInnerSize(const View* view, int16_t* width, int16_t* height);
View* StackChildAt(const View* view, uint16_t index); // in order of creation; null past the end
uint16_t StackChildCount(const View* view);

} // namespace framereel
