// Prints for how long a viewer shows a GIF file once, in seconds: the sum of its delays, read by a foreign reader.
//
//   play_time FILE
#include <cstdio>
#include <gif_lib.h>

int main(int count, char** arguments) {
  GifFileType* gif = count == 2 ? DGifOpenFileName(arguments[1], nullptr) : nullptr;
  if (!gif || DGifSlurp(gif) != GIF_OK) {
    std::fprintf(stderr, "play_time: no GIF file\n");
    return 1;
  }
  int hundredths = 0;
  for (int i = 0; i < gif->ImageCount; ++i) {
    GraphicsControlBlock control;
    if (DGifSavedExtensionToGCB(gif, i, &control) == GIF_OK) hundredths += control.DelayTime;
  }
  std::printf("%d.%02d\n", hundredths / 100, hundredths % 100);
  return DGifCloseFile(gif, nullptr) == GIF_OK ? 0 : 1;
}
