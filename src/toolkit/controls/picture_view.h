// PictureView: a bitmap of the resources, 32 by 32 unless it is given a size.
#pragma once

#include "platform/records/view_record.h"

namespace framereel {

const ViewClass* PictureViewClass();
void PictureViewSetUpClass(); // once, at start-up

// The picture by its number, counted as LoadPicture does; without such a picture nothing is shown.
void PictureViewSetBitmap(View* view, uint16_t id);

} // namespace framereel
