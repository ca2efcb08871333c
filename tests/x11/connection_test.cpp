// What happens to the whole display: its palette changes, the connection breaks, and nothing stays behind; the session
// ends. And the clock.
#include "x11/user.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <utility>

#include <X11/SM/SMlib.h>

extern "C" void _IceTransNoListen(const char* protocol); // libICE's; its headers leave it out

namespace framereel {

namespace {

class X11Whole : public X11WindowTest {
protected:
  // The server throws the display's connection out.
  void Break() { XKillClient(artist.display, XGContextFromGC(X11Live()->drawing)); }
};

TEST_F(X11Whole, TellsThePaletteAsItIsNow) {
  std::vector<PaletteColour> told(256, PaletteColour{1, 2, 3});
  const auto colour = [&](unsigned long cell) {
    DisplayPalette(told.data());
    return told[cell].red * 65536 + told[cell].green * 256 + told[cell].blue;
  };
  if (artist.Depth() > 8) GTEST_SKIP() << "it has none";
  EXPECT_EQ(colour(artist.Black()), 0);
  EXPECT_EQ(colour(artist.White()), 0xFFFFFF);
  const bool fixed = DefaultVisual(artist.display, DefaultScreen(artist.display))->c_class != PseudoColor;
  Drain();
  if (fixed) return;
  const Colormap map = DefaultColormap(artist.display, DefaultScreen(artist.display));
  XColor cell{0, 0x12FF, 0xFF00, 0x7F80, DoRed | DoGreen | DoBlue, 0};
  ASSERT_TRUE(XAllocColorCells(artist.display, map, False, nullptr, 0, &cell.pixel, 1));
  XStoreColor(artist.display, map, &cell);
  Drain();
  EXPECT_EQ(colour(cell.pixel), 0x12FF7F);
  cell.red = 0;
  XStoreColor(artist.display, map, &cell);
  OwnSurface into(10, 10);
  ASSERT_TRUE(DisplayReadScreen({0, 0, 10, 10}, into.surface, 0, 0)); // tells as much as events
  EXPECT_EQ(colour(cell.pixel), 0x00FF7F);
  XFreeColors(artist.display, map, &cell.pixel, 1, 0);
}

TEST_F(X11Whole, TellsTheResolutionThatTheUserHasSetForText) {
  const std::pair<const char*, int32_t> settings[] = {
      {"Xft.antialias:\t1\nXft.dpi:\t192\n", 192}, {"*dpi: 144.5", 144}, {"Xft.dpi: -1", 0}, {"", 0}};
  for (const auto& [text, told] : settings) {
    XChangeProperty(artist.display, artist.root, XA_RESOURCE_MANAGER, XA_STRING, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(text), int(std::strlen(text)));
    XSync(artist.display, False);
    DisplayClose();
    ASSERT_TRUE(DisplayOpen());
    EXPECT_EQ(DisplayDotsPerInch(), told) << text;
  }
  XDeleteProperty(artist.display, artist.root, XA_RESOURCE_MANAGER);
}

TEST_F(X11Whole, OutlivesABrokenConnectionWhicheverCallFindsIt) {
  const uint8_t pattern[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  const PixelRect all = {0, 0, 300, 300};
  const DisplayWindowSpec spec = {WindowRole::kMain, {10, 10, 110, 110}, nullptr, ""};
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
      [&] { return DisplayFreeSurface(&surface), DisplayNewSurface(300, 300, &surface) && artist.HasSharedMemory(); },
      [&] { return DisplayIsLost() && (DisplayOpen() || !DisplayIsLost()); },
      [&] { return DisplayNewWindow(spec) != nullptr; },
      [&] { return DisplayShowWindow(window, true), false; },
      [&] { return DisplayPlaceWindow(window, all), false; },
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
    window = DisplayNewWindow(spec);
    Drain();
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

TEST(X11Clock, SleepsAtLeastSoLong) {
  const uint32_t start = DisplayTick();
  DisplaySleep(15);
  EXPECT_GE(DisplayTick() - start, 15u);
}

// ---- A logout: the session manager is a small one in a process of its own, since the sides of libSM wait for each
// other

int line; // to the test: a letter for each order, and for what the program says
SmsConn program;

void Report(char what) {
  if (::write(line, &what, 1) != 1) ::_exit(1);
}

Status Welcome(SmsConn from, SmPointer, unsigned long* mask, SmsCallbacks* callbacks, char**) {
  program = from;
  *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
          SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask;
  callbacks->register_client.callback = [](SmsConn, SmPointer, char*) -> Status {
    SmsRegisterClientReply(program, SmsGenerateClientID(program));
    SmsSaveYourself(program, SmSaveLocal, False, SmInteractStyleNone, False); // as the protocol has it for a new one
    return 1;
  };
  callbacks->interact_request.callback = [](SmsConn, SmPointer, int) { Report('a'), SmsInteract(program); };
  callbacks->interact_done.callback = [](SmsConn, SmPointer, Bool cancels) { Report(cancels ? 'n' : 'y'); };
  callbacks->save_yourself_done.callback = [](SmsConn, SmPointer, Bool saved) { Report(saved ? 's' : 'f'); };
  callbacks->close_connection.callback = [](SmsConn, SmPointer, int, char**) { ::_exit(0); };
  callbacks->set_properties.callback = [](SmsConn, SmPointer, int, SmProp** properties) { ::free(properties); };
  return 1;
}

void Obey(char order) {
  if (order == 'q') SmsSaveYourself(program, SmSaveBoth, True, SmInteractStyleAny, False);
  if (order == 'h') SmsSaveYourself(program, SmSaveBoth, True, SmInteractStyleNone, True); // in a hurry
  if (order == 'c') SmsShutdownCancelled(program);
  if (order == 'd') SmsDie(program);
}

// It reports its address first. It ends with the test, which holds the other end of the line.
[[noreturn]] void RunManager() {
  char reason[256];
  int count = 0;
  IceListenObj* doors = nullptr;
  const auto anybody = [](char*) -> Bool { return True; };
  _IceTransNoListen("tcp");
  SmsInitialize("test", "1", Welcome, nullptr, anybody, sizeof reason, reason);
  if (!IceListenForConnections(&count, &doors, sizeof reason, reason)) ::_exit(1);
  for (int i = 0; i < count; i++) IceSetHostBasedAuthProc(doors[i], anybody);
  for (const char* letter = IceComposeNetworkIdList(count, doors); *letter; letter++) Report(*letter);
  Report('\n');
  // First the door, later the program.
  pollfd heard[] = {{line, POLLIN, 0}, {IceGetListenConnectionNumber(doors[0]), POLLIN, 0}};
  for (IceConn connection = nullptr; ::poll(heard, 2, -1) > 0;) {
    char order = 0;
    if (heard[0].revents && ::read(line, &order, 1) != 1) break;
    Obey(order);
    if (heard[1].revents && connection) {
      IceProcessMessages(connection, nullptr, nullptr);
    } else if (heard[1].revents) {
      IceAcceptStatus status;
      connection = IceAcceptConnection(doors[0], &status);
      heard[1].fd = IceConnectionNumber(connection);
    }
  }
  IceFreeListenObjs(count, doors);
  ::_exit(0);
}

class X11Logout : public X11WindowTest {
protected:
  void SetUp() override {
    int ends[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    line = ends[1];
    if (::fork() == 0) {
      ::close(ends[0]);
      RunManager();
    }
    ::close(line);
    manager = ends[0];
    std::string address;
    for (char letter; ::read(manager, &letter, 1) == 1 && letter != '\n';) address += letter;
    X11WindowTest::SetUp();
    ::setenv("SESSION_MANAGER", address.c_str(), 1);
    Open(Role::kMain, {10, 10, 100, 100});
    ::unsetenv("SESSION_MANAGER");
  }
  void TearDown() override {
    X11WindowTest::TearDown();
    if (manager >= 0) ::close(manager);
  }

  void Hear() {
    for (char letter; ::recv(manager, &letter, 1, MSG_DONTWAIT) == 1;) reported += letter;
    for (const DisplayEvent& event : Drain()) {
      if (event.kind == Kind::kSessionAsks) told += 'A';
      if (event.kind == Kind::kSessionEnds) told += event.flag ? 'E' : 'G';
    }
  }
  // Gives the order, and waits for what the manager hears and our program is told.
  std::string After(const std::string& orders, size_t reports, size_t tells) {
    reported = told = "";
    for (const char each : orders) EXPECT_EQ(::write(manager, &each, 1), 1);
    Until([&] { return Hear(), reported.size() >= reports && told.size() >= tells; });
    return reported + " " + told;
  }

  int manager = -1; // the line to it
  std::string reported, told;
};

TEST_F(X11Logout, WaitsForOurAnswerAndMayBeTakenBackByBothSides) {
  EXPECT_EQ(After("", 1, 0), "s ");
  EXPECT_EQ(After("q", 1, 1), "a A");
  DisplayAnswerSession(false);
  EXPECT_EQ(After("", 2, 0), "nf ");
  EXPECT_EQ(After("c", 0, 1), " G");
  EXPECT_EQ(After("q", 1, 1), "a A");
  EXPECT_EQ(After("c", 1, 1), "f G");
  DisplayAnswerSession(true); // too late
  EXPECT_EQ(After("q", 1, 1), "a A");
  DisplayAnswerSession(true);
  EXPECT_EQ(After("", 2, 0), "ys ");
  EXPECT_EQ(After("h", 1, 0), "s ") << "nobody may be asked";
  EXPECT_EQ(After("d", 0, 1), " E");
  ::close(std::exchange(manager, -1)); // and so it is gone without a word
  Until([&] { return Drain(), !X11Live()->session.manager; });
}

} // namespace

} // namespace framereel
