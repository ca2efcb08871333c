// framereel-demo-scene: something that moves, to have something to record on a server without a desktop. A window over
// the whole screen shows a colour gradient, a line of text that scrolls and a box that bounces, 60 steps a second,
// until SIGTERM or until the parent process ends.
//
//   framereel-demo-scene [--ready-fd N]   writes one byte to the file descriptor N when the first picture stands
//
// It speaks to the X server itself and uses nothing of the recorder's: it plays a foreign program. What stands where is
// a function of the time alone, so a slow machine leaves out steps and the speed stays.
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace {

constexpr int64_t kStepNanoseconds = 1'000'000'000 / 60;
constexpr int kTextScale = 4;
constexpr int kTextPixelsPerStep = 3;
constexpr int kBoxPixelsPerStepAcross = 5;
constexpr int kBoxPixelsPerStepDown = 3;
constexpr char kText[] = "framereel demo scene - scrolling text, a moving box, a colour gradient - ";

struct Scene {
  Display* display;
  Window window;
  int width, height; // of the screen, in pixels
  unsigned depth;
  Pixmap background; // the gradient
  Pixmap canvas;     // the next picture, so that none is shown half done
  GC paint;
  GC text;       // fills with the letters, repeated without end
  int textWidth; // of one repetition
  XRectangle band;
  XRectangle box; // where the last step left it
};

[[noreturn]] void Fail(const char* message) {
  std::fprintf(stderr, "framereel-demo-scene: %s\n", message);
  std::exit(1);
}

// The colour at `part` of 0 to 1535 on the wheel from red over green and blue back to red; black where a palette is
// full.
unsigned long WheelColour(const Scene& scene, int part) {
  auto channel = [part](int shift) {
    int distance = std::abs((part + shift) % 1536 - 768); // 0 at this channel's opposite
    return static_cast<unsigned short>(std::clamp(distance - 256, 0, 255) * 257);
  };
  XColor colour{0, channel(0), channel(1024), channel(512), DoRed | DoGreen | DoBlue, 0};
  int screen = DefaultScreen(scene.display);
  Colormap map = DefaultColormap(scene.display, screen);
  return XAllocColor(scene.display, map, &colour) ? colour.pixel : BlackPixel(scene.display, screen);
}

void PaintGradient(Scene* scene) {
  Visual* visual = DefaultVisual(scene->display, DefaultScreen(scene->display));
  int stripes = std::min(scene->width, visual->c_class == TrueColor ? 256 : 48);
  scene->background = XCreatePixmap(scene->display, scene->window, scene->width, scene->height, scene->depth);
  for (int i = 0; i < stripes; i++) {
    int left = scene->width * i / stripes;
    int right = scene->width * (i + 1) / stripes;
    XSetForeground(scene->display, scene->paint, WheelColour(*scene, 1536 * i / stripes));
    XFillRectangle(scene->display, scene->background, scene->paint, left, 0, right - left, scene->height);
  }
}

// Draws the text with the server's own font and enlarges it to a bitmap for filling.
void PrepareText(Scene* scene) {
  Display* d = scene->display;
  XFontStruct* font = XLoadQueryFont(d, "fixed");
  if (!font) Fail("the X server has no font \"fixed\"");
  int length = int(std::strlen(kText));
  int width = XTextWidth(font, kText, length);
  int height = font->ascent + font->descent;

  Pixmap small = XCreatePixmap(d, scene->window, width, height, 1);
  GC bits = XCreateGC(d, small, 0, nullptr);
  XSetFont(d, bits, font->fid);
  XSetForeground(d, bits, 0);
  XFillRectangle(d, small, bits, 0, 0, width, height);
  XSetForeground(d, bits, 1);
  XDrawString(d, small, bits, 0, font->ascent, kText, length);
  XImage* letters = XGetImage(d, small, 0, 0, width, height, 1, XYPixmap);
  if (!letters) Fail("the X server does not give the text back");

  scene->textWidth = width * kTextScale;
  int bandHeight = height * kTextScale;
  Pixmap large = XCreatePixmap(d, scene->window, scene->textWidth, bandHeight, 1);
  XSetForeground(d, bits, 0);
  XFillRectangle(d, large, bits, 0, 0, scene->textWidth, bandHeight);
  XSetForeground(d, bits, 1);
  for (int y = 0; y < height; y++) {
    for (int x = 0; x < width; x++) {
      if (!XGetPixel(letters, x, y)) continue;
      XFillRectangle(d, large, bits, x * kTextScale, y * kTextScale, kTextScale, kTextScale);
    }
  }
  XDestroyImage(letters);
  XFreePixmap(d, small);
  XFreeGC(d, bits);
  XFreeFont(d, font);

  int top = std::max(0, (scene->height - bandHeight) / 2);
  scene->band = {0, static_cast<short>(top), static_cast<unsigned short>(scene->width),
                 static_cast<unsigned short>(bandHeight)};
  XGCValues values{};
  values.foreground = BlackPixel(d, DefaultScreen(d));
  values.fill_style = FillStippled;
  values.stipple = large;
  scene->text = XCreateGC(d, scene->window, GCForeground | GCFillStyle | GCStipple, &values);
}

Scene OpenScene() {
  Scene scene{};
  Display* d = scene.display = XOpenDisplay(nullptr);
  if (!d) Fail("there is no X server at DISPLAY");
  int screen = DefaultScreen(d);
  scene.width = DisplayWidth(d, screen);
  scene.height = DisplayHeight(d, screen);
  scene.depth = unsigned(DefaultDepth(d, screen));
  XSetWindowAttributes attributes{};
  attributes.override_redirect = True;
  attributes.event_mask = ExposureMask;
  scene.window = XCreateWindow(d, RootWindow(d, screen), 0, 0, scene.width, scene.height, 0, CopyFromParent,
                               InputOutput, CopyFromParent, CWOverrideRedirect | CWEventMask, &attributes);
  XStoreName(d, scene.window, "framereel demo scene");
  scene.paint = XCreateGC(d, scene.window, 0, nullptr);
  XSetGraphicsExposures(d, scene.paint, False);
  PaintGradient(&scene);
  PrepareText(&scene);
  scene.canvas = XCreatePixmap(d, scene.window, scene.width, scene.height, scene.depth);
  XCopyArea(d, scene.background, scene.canvas, scene.paint, 0, 0, scene.width, scene.height, 0, 0);
  // What another window lays bare, the server fills again by itself.
  XSetWindowBackgroundPixmap(d, scene.window, scene.background);
  XMapRaised(d, scene.window);
  XEvent event;
  XWindowEvent(d, scene.window, ExposureMask, &event);
  return scene;
}

// A place that runs to and fro between 0 and `range`.
int Bounce(int64_t distance, int range) {
  if (range <= 0) return 0;
  int64_t place = distance % (2 * int64_t{range});
  return int(place <= range ? place : 2 * int64_t{range} - place);
}

XRectangle BoxAt(const Scene& scene, int64_t step) {
  int side = std::max(1, std::min(scene.width, scene.height) / 5);
  return {static_cast<short>(Bounce(step * kBoxPixelsPerStepAcross, scene.width - side)),
          static_cast<short>(Bounce(step * kBoxPixelsPerStepDown, scene.height - side)),
          static_cast<unsigned short>(side), static_cast<unsigned short>(side)};
}

void Copy(const Scene& scene, Drawable from, Drawable to, const XRectangle& r) {
  XCopyArea(scene.display, from, to, scene.paint, r.x, r.y, r.width, r.height, r.x, r.y);
}

void PaintBox(const Scene& scene) {
  Display* d = scene.display;
  int screen = DefaultScreen(d);
  int edge = std::max(1, scene.box.width / 12);
  XSetForeground(d, scene.paint, WhitePixel(d, screen));
  XFillRectangles(d, scene.canvas, scene.paint, const_cast<XRectangle*>(&scene.box), 1);
  if (2 * edge >= scene.box.width) return;
  XSetForeground(d, scene.paint, BlackPixel(d, screen));
  XFillRectangle(d, scene.canvas, scene.paint, scene.box.x + edge, scene.box.y + edge, scene.box.width - 2 * edge,
                 scene.box.height - 2 * edge);
}

// Brings the picture to the given step; touches only what moves.
void ShowStep(Scene* scene, int64_t step) {
  XRectangle before = scene->box;
  scene->box = BoxAt(*scene, step);
  Copy(*scene, scene->background, scene->canvas, before);
  Copy(*scene, scene->background, scene->canvas, scene->band);
  int shift = int(step * kTextPixelsPerStep % scene->textWidth);
  XSetTSOrigin(scene->display, scene->text, -shift, scene->band.y);
  XFillRectangles(scene->display, scene->canvas, scene->text, &scene->band, 1);
  PaintBox(*scene);
  Copy(*scene, scene->canvas, scene->window, before);
  Copy(*scene, scene->canvas, scene->window, scene->band);
  Copy(*scene, scene->canvas, scene->window, scene->box);
  XSync(scene->display, True); // the events that have come say nothing new
}

int64_t Nanoseconds() {
  timespec now;
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

[[noreturn]] void RunForEver(Scene* scene) {
  int64_t start = Nanoseconds();
  for (;;) {
    int64_t step = (Nanoseconds() - start) / kStepNanoseconds + 1;
    int64_t due = start + step * kStepNanoseconds;
    timespec until = {static_cast<time_t>(due / 1'000'000'000), long(due % 1'000'000'000)};
    while (::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
    }
    ShowStep(scene, step);
  }
}

void EndWithParent() {
  pid_t parent = ::getppid();
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (::getppid() != parent) std::exit(0); // it ended in between
}

// The descriptor of --ready-fd, or -1 when it is not asked for.
int ReadyDescriptor(int argc, char** argv) {
  if (argc == 1) return -1;
  char* end = nullptr;
  long number = argc == 3 && std::strcmp(argv[1], "--ready-fd") == 0 ? std::strtol(argv[2], &end, 10) : -1;
  if (!end || end == argv[2] || *end != 0 || number < 0 || number > INT_MAX) {
    std::fprintf(stderr, "usage: framereel-demo-scene [--ready-fd N]\n");
    std::exit(2);
  }
  if (::fcntl(int(number), F_GETFD) < 0) Fail("the descriptor of --ready-fd is not open");
  return int(number);
}

void TellReady(int descriptor) {
  if (descriptor < 0) return;
  while (::write(descriptor, "\n", 1) < 0 && errno == EINTR) {
  }
  if (descriptor > 2) ::close(descriptor);
}

} // namespace

int main(int argc, char** argv) {
  int ready = ReadyDescriptor(argc, argv);
  EndWithParent();
  Scene scene = OpenScene();
  ShowStep(&scene, 0);
  TellReady(ready);
  RunForEver(&scene);
}
