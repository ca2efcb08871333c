// What happens to the whole display: its palette changes, the connection breaks, and nothing stays behind. And the
// clock.
#include "x11/artist.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <thread>

#include "win32/x11/x11_display.h"

// The libraries keep what they have of a display whose server goes while it is being opened: there is nothing left to
// close.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libX\nleak:libxcb";
}

namespace framereel {

namespace {

class X11Whole : public X11Test {
protected:
  // The server throws the display's connection out.
  void Break() {
    XKillClient(artist.display, XGContextFromGC(X11Live()->drawing));
    XSync(artist.display, False);
  }
  // A pass of an event loop that deals with nothing.
  void PassEvents() {
    DisplayEvent event;
    while (DisplayNextEvent(&event)) {
    }
  }
};

TEST_F(X11Whole, TellsThePaletteAsItIsNowAndAsksForItOnceBetweenEvents) {
  std::vector<PaletteColour> told(256, PaletteColour{1, 2, 3});
  auto colour = [&](unsigned long cell) {
    DisplayPalette(told.data());
    return told[cell].red * 65536 + told[cell].green * 256 + told[cell].blue;
  };
  if (artist.Depth() > 8) { // there is none
    for (unsigned long i = 0; i < told.size(); i++) EXPECT_EQ(colour(i), 0x010203);
    return;
  }
  EXPECT_EQ(colour(artist.Black()), 0);
  EXPECT_EQ(colour(artist.White()), 0xFFFFFF);
  const bool fixed = DefaultVisual(artist.display, DefaultScreen(artist.display))->c_class != PseudoColor;
  for (int32_t pass = 0; pass < 3; pass++) {
    PassEvents();
    const unsigned long before = NextRequest(X11Live()->display);
    for (int32_t i = 0; i < 5; i++) colour(0);
    EXPECT_EQ(NextRequest(X11Live()->display), fixed ? before : before + 1);
  }
  if (fixed) return;

  Colormap map = DefaultColormap(artist.display, DefaultScreen(artist.display));
  XColor cell{0, 0x12FF, 0xFF00, 0x7F80, DoRed | DoGreen | DoBlue, 0};
  ASSERT_TRUE(XAllocColorCells(artist.display, map, False, nullptr, 0, &cell.pixel, 1));
  auto store = [&] {
    XStoreColor(artist.display, map, &cell);
    XSync(artist.display, False);
  };
  store();
  PassEvents();
  EXPECT_EQ(colour(cell.pixel), 0x12FF7F);
  cell.red = 0;
  store();
  OwnSurface into(10, 10);
  ASSERT_TRUE(DisplayReadScreen({0, 0, 10, 10}, into.surface, 0, 0)); // tells as much as events
  EXPECT_EQ(colour(cell.pixel), 0x00FF7F);
  XFreeColors(artist.display, map, &cell.pixel, 1, 0);
}

TEST_F(X11Whole, OutlivesABrokenConnectionWhicheverCallFindsIt) {
  const uint8_t pattern[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  const PixelRect all = {0, 0, 300, 300};
  int32_t x = 7, y = 8;
  PaletteColour colours[256] = {{9, 9, 9}};
  DisplayEvent event;
  Surface surface{};
  DisplayWindow* window = nullptr;
  const std::function<bool()> calls[] = {
      // True is an answer that only a standing connection could give.
      [&] { return DisplayScreen().width != 0; },
      [&] { return DisplayReadScreen(all, surface, 0, 0); },
      [&] { return DisplayDrawScreen(surface, all, 0, 0); },
      [&] { return DisplayInvertScreen(all, pattern); },
      [&] { return DisplayPointer() != nullptr; },
      [&] { return DisplayPointerPlace(&x, &y) || x != 7; },
      [&] { return DisplayMovePointer(1, 1), false; },
      [&] { return DisplayPalette(colours), colours[0].red != 9; },
      [&] { return DisplayFreeSurface(&surface), surface.pixels; },
      [&] { return DisplayFreeSurface(&surface), DisplayNewSurface(300, 300, &surface) && artist.HasSharedMemory(); },
      [&] { return DisplayIsLost() && (DisplayOpen() || !DisplayIsLost()); },
      [&] {
        return DisplayNewWindow({WindowRole::kPopup, all, nullptr, ""}) != nullptr;
      },
      [&] { return DisplayShowWindow(window, true), false; },
      [&] {
        return DisplayPlaceWindow(window, {20, 20, 130, 130}), false;
      },
      [&] { return DisplayStackWindow(window, true), false; },
      [&] { return DisplayMinimiseWindow(window, true), false; },
      [&] { return DisplayActivateWindow(window), false; },
      [&] { return DisplayDragWindow(window, 20, 20); },
      [&] { return DisplayPresent(window, surface, all), false; },
      [&] { return DisplayRefresh(all), false; },
      [&] { return DisplayCapturePointer(window), false; },
      [&] { return DisplayPointerShape(window, PointerShape::kWait, nullptr), false; },
      [&] { return DisplayBeep(), false; },
      [&] { return DisplayKeyIsDown('A') || DisplayCapsLockIsOn(); },
      // From what it knows it answers until the loss is found.
      [&] { return DisplayIsLost() && DisplayKeyCharacter(38, false, false) != 0; },
      [&] { return DisplayShareText(SharedText::kClipboard, "x"), false; },
      [&] { return DisplayHasSharedText(SharedText::kClipboard); },
      [&] { return !DisplaySharedText(SharedText::kSelected).empty(); },
      [&] { return DisplayNextEvent(&event); },
  };
  for (const auto& finds : calls) {
    OwnSurface recorded(300, 300, 0x5A);
    ASSERT_TRUE(DisplayNewSurface(300, 300, &surface));
    window = DisplayNewWindow({WindowRole::kMain, {10, 10, 110, 110}, nullptr, ""});
    PassEvents();
    EXPECT_FALSE(DisplayIsLost());
    Break();
    EXPECT_FALSE(finds());
    EXPECT_TRUE(DisplayIsLost());
    for (const auto& call : calls) EXPECT_FALSE(call());
    DisplayFreeWindow(window);
    DisplayFreeSurface(&surface);
    DisplayClose();
    ASSERT_TRUE(DisplayOpen());
    EXPECT_EQ(RowOf(recorded.surface, 299)[0], 0x5A); // it can still be saved
  }
  EXPECT_TRUE(X11Live()->segments.empty());
}

TEST_F(X11Whole, LeavesNoSharedMemoryBehind) {
  if (!artist.HasSharedMemory()) GTEST_SKIP() << "the server has none";
  Surface surface;
  ASSERT_TRUE(DisplayNewSurface(300, 300, &surface));
  int id = static_cast<X11Segment*>(surface.memory)->shared.shmid;
  shmid_ds state;
  EXPECT_EQ(::shmctl(id, IPC_STAT, &state), 0);
  DisplayFreeSurface(&surface);
  Catch();
  EXPECT_NE(::shmctl(id, IPC_STAT, &state), 0);
}

// Errors of other connections in the process are not ours to swallow, and ours are nobody else's.
TEST_F(X11Whole, PassesOnErrorsOfOthers) {
  DisplayClose();
  static int seen;
  seen = 0;
  XErrorHandler before = XSetErrorHandler([](Display*, XErrorEvent*) { return ++seen; });
  ASSERT_TRUE(DisplayOpen());
  Display* display = X11Live()->display;
  EXPECT_TRUE(DisplayOpen());
  EXPECT_EQ(X11Live()->display, display); // opened once

  XMapWindow(artist.display, 1);
  XSync(artist.display, False);
  EXPECT_EQ(seen, 1);
  XMapWindow(display, 1);
  {
    OwnSurface surface(300, 300); // the refusal that arrives meanwhile is not one of shared memory
    EXPECT_EQ(surface.surface.memory != nullptr, artist.HasSharedMemory());
  }
  Catch();
  EXPECT_EQ(seen, 1);
  DisplayClose();
  XSetErrorHandler(before);
}

TEST(X11WithoutServer, AnswersNothing) {
  const char* named = ::getenv("DISPLAY");
  ASSERT_NE(named, nullptr);
  const std::string server = named;
  ::setenv("DISPLAY", "no-such-place:99", 1);
  for (int32_t i = 0; i < 2; i++) {
    EXPECT_EQ(DisplayScreen().width, 0); // before it is opened, and then
    EXPECT_FALSE(DisplayOpen());
    EXPECT_EQ(DisplayPointer(), nullptr);
    EXPECT_FALSE(DisplayIsLost());
  }
  DisplayClose();
  ::setenv("DISPLAY", server.c_str(), 1);
  EXPECT_TRUE(DisplayOpen());
  DisplayClose();
}

// The server named by DISPLAY, for one client, to whom it says but so many bytes. While it stands DISPLAY names it.
class ShortSpokenServer {
public:
  explicit ShortSpokenServer(size_t most) : left(most) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ::bind(listener, reinterpret_cast<sockaddr*>(&address), size);
    ::listen(listener, 1);
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    ::setenv("DISPLAY", ("127.0.0.1:" + std::to_string(ntohs(address.sin_port) - 6000)).c_str(), 1);
    work = std::thread([this] { Serve(); });
  }
  ~ShortSpokenServer() {
    ::shutdown(listener, SHUT_RDWR);
    work.join();
    ::close(listener);
    ::setenv("DISPLAY", name.c_str(), 1);
  }

private:
  void Serve() {
    sockaddr_un address{AF_UNIX, {}};
    ("/tmp/.X11-unix/X" + name.substr(name.find(':') + 1)).copy(address.sun_path, sizeof address.sun_path - 1);
    const int client = ::accept(listener, nullptr, nullptr), server = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ::connect(server, reinterpret_cast<sockaddr*>(&address), sizeof address);
    pollfd ends[] = {{client, POLLIN, 0}, {server, POLLIN, 0}};
    while (client >= 0 && left > 0 && ::poll(ends, 2, -1) > 0) {
      const bool speaks = ends[1].revents;
      char bytes[4096];
      const size_t room = speaks ? std::min(left, sizeof bytes) : sizeof bytes;
      const ssize_t count = ::read(speaks ? server : client, bytes, room);
      if (count <= 0 || ::send(speaks ? client : server, bytes, size_t(count), MSG_NOSIGNAL) != count) break;
      if (speaks) left -= size_t(count);
    }
    ::close(client);
    ::close(server);
  }

  std::string name = ::getenv("DISPLAY");
  size_t left;
  int listener = ::socket(AF_INET, SOCK_STREAM, 0);
  std::thread work;
};

TEST(X11WithoutServer, IsLostAtAnyMomentOfItsStart) {
  int losses = 0;
  bool stands = false;
  for (size_t most = 0; !stands; most += 331) {
    ASSERT_LT(most, 1U << 20);
    const ShortSpokenServer server(most);
    if (DisplayOpen()) {
      DisplayWindow* window = DisplayNewWindow({WindowRole::kMain, {0, 0, 50, 50}, nullptr, "late"});
      stands = window && !DisplayIsLost();
      if (window) DisplayFreeWindow(window);
    }
    losses += DisplayIsLost();
    DisplayClose();
  }
  EXPECT_GT(losses, 3);
}

// Signals arrive all the time; the bound below does not depend on the machine's speed.
TEST(X11Clock, SleepsAtLeastSoLongWhateverHappens) {
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = [](int) {};
  ::sigaction(SIGALRM, &action, &before);
  const itimerval often = {{0, 500}, {0, 500}}, never{};
  ::setitimer(ITIMER_REAL, &often, nullptr);
  uint32_t start = DisplayTick();
  DisplaySleep(15);
  uint32_t end = DisplayTick();
  ::setitimer(ITIMER_REAL, &never, nullptr);
  ::sigaction(SIGALRM, &before, nullptr);
  EXPECT_GE(end - start, 15u);
}

} // namespace

} // namespace framereel
