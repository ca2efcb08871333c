// Which marks stand, what they show, and reading the screen beside them. The rules are told in x11_marks.h.
#include <algorithm>
#include <cstring>
#include <utility>

#include "win32/pixels/pixels.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

constexpr uint32_t kPatienceMs = 500;     // a compositor that has not painted by then does not
constexpr uint32_t kPartlyLooks = 40;     // a millisecond apart
constexpr uint32_t kUnsettledMs = 30;     // a line that has gone for so long has not just moved
constexpr size_t kReadKeptMost = 1 << 16; // bytes
constexpr size_t kSparesKept = 8;         // windows

int32_t WidthOf(const PixelRect& r) {
  return r.right - r.left;
}

int32_t HeightOf(const PixelRect& r) {
  return r.bottom - r.top;
}

size_t IndexOf(const PixelRect& where, int32_t column, int32_t row) {
  return size_t(row - where.top) * size_t(WidthOf(where)) + size_t(column - where.left);
}

bool IsPicture(const X11Mark& mark) {
  return mark.inverts.empty();
}

// What its window has at that place of the screen; 0 for nothing.
template <typename Mark> uint32_t ShownAt(const Mark& mark, int32_t column, int32_t row) {
  if (mark.shown.empty() || !Holds(mark.where, column, row)) return 0;
  return mark.shown[IndexOf(mark.where, column, row)];
}

bool HoldsInverted(const X11Mark& mark, int32_t column, int32_t row) {
  return !IsPicture(mark) && Holds(mark.where, column, row) && mark.inverts[IndexOf(mark.where, column, row)];
}

bool InvertsNothing(const X11Mark& mark) {
  return !IsPicture(mark) && std::find(mark.inverts.begin(), mark.inverts.end(), 1) == mark.inverts.end();
}

// Where it lies on the screen, which may have become smaller since.
PixelRect OnScreen(const X11Connection* x, const PixelRect& where) {
  return Intersect(where, {0, 0, x->facts.width, x->facts.height});
}

// Calls what is given with the places of all pixels in the rectangle and their numbers.
template <typename Function> void ForEachPixel(const PixelRect& where, Function function) {
  size_t index = 0;
  for (int32_t row = where.top; row < where.bottom; row++) {
    for (int32_t column = where.left; column < where.right; column++) function(column, row, index++);
  }
}

template <typename Mark> bool ShowsIn(const Mark& mark, const PixelRect& where) {
  bool shows = false;
  ForEachPixel(Intersect(mark.where, where),
               [&](int32_t column, int32_t row, size_t) { shows = shows || ShownAt(mark, column, row) != 0; });
  return shows;
}

// ---- Patches -----------------------------------------------------------------------------------------------------

Surface SurfaceOf(const X11Connection* x, X11Patch& patch) {
  const PixelLayout& layout = x->facts.layout;
  const int32_t stride = WidthOf(patch.where) * layout.bytesPerPixel;
  patch.bytes.resize(size_t(stride) * size_t(HeightOf(patch.where)));
  return {layout, WidthOf(patch.where), HeightOf(patch.where), stride, patch.bytes.data(), nullptr};
}

// What is beyond the screen, or cannot be had, is zeros.
X11Patch ReadPatch(X11Connection* x, const PixelRect& where) {
  X11Patch patch = {where, {}};
  const Surface into = SurfaceOf(x, patch);
  const PixelRect seen = OnScreen(x, where);
  if (!IsEmpty(seen)) X11ReadScreen(x, seen, into, seen.left - where.left, seen.top - where.top);
  return patch;
}

// The part of a surface that is `where` on the screen, and lies within the patch there.
struct Rows {
  const Surface& surface;
  int32_t left, top;
  const PixelRect& where;
};

// Calls what is given with each row there, the same one of the patch, and their bytes.
template <typename Function>
void ForEachRow(const X11Connection* x, const Rows& rows, X11Patch& patch, Function function) {
  const Surface other = SurfaceOf(x, patch);
  const int64_t pixelBytes = other.layout.bytesPerPixel;
  for (int32_t y = 0; y < HeightOf(rows.where); y++) {
    uint8_t* row = RowOf(rows.surface, rows.top + y) + rows.left * pixelBytes;
    uint8_t* same = RowOf(other, rows.where.top + y - patch.where.top);
    function(row, same + (rows.where.left - patch.where.left) * pixelBytes, size_t(WidthOf(rows.where) * pixelBytes));
  }
}

void CopyTo(const X11Connection* x, X11Patch& patch, const Rows& rows) {
  ForEachRow(x, rows, patch, [](const uint8_t* row, uint8_t* same, size_t bytes) { std::memcpy(same, row, bytes); });
}

void CopyFrom(const X11Connection* x, X11Patch& patch, const Rows& rows) {
  ForEachRow(x, rows, patch, [](uint8_t* row, const uint8_t* same, size_t bytes) { std::memcpy(row, same, bytes); });
}

bool AreAlike(const X11Connection* x, X11Patch& patch, const Rows& rows) {
  bool alike = true;
  ForEachRow(x, rows, patch, [&](const uint8_t* row, const uint8_t* same, size_t bytes) {
    alike = alike && std::memcmp(row, same, bytes) == 0;
  });
  return alike;
}

// As a window of marks has them.
std::vector<uint32_t> MarkPixels(const X11Connection* x, X11Patch& patch) {
  const Surface surface = SurfaceOf(x, patch);
  std::vector<uint32_t> pixels(size_t(AreaOf(patch.where)));
  ForEachPixel({0, 0, surface.width, surface.height}, [&](int32_t column, int32_t row, size_t i) {
    pixels[i] = X11MarkPixel(x, PixelAt(surface, column, row));
  });
  return pixels;
}

// ---- Taking off --------------------------------------------------------------------------------------------------

bool IsRecent(const X11ClearedMark& mark) {
  return DisplayTick() - mark.tick < kPatienceMs;
}

// How much of what was cleared the compositor's picture still shows: all of it, or nothing, or pixels that are alike.
// Where others stand nothing is learnt.
enum class Sight : uint8_t { kAll, kSome, kNone };

Sight LookFor(X11Connection* x, const X11ClearedMark& mark) {
  const X11Marks& marks = x->marks;
  X11Patch patch = ReadPatch(x, mark.where);
  const std::vector<uint32_t> now = MarkPixels(x, patch);
  bool some = false, all = true;
  ForEachPixel(mark.where, [&](int32_t column, int32_t row, size_t i) {
    if (!mark.shown[i]) return;
    const auto stands = [&](const X11Mark& other) { return ShownAt(other, column, row) != 0; };
    if (std::any_of(marks.standing.begin(), marks.standing.end(), stands)) return;
    const auto stood = [&](const X11ClearedMark& other) { return ShownAt(other, column, row) == now[i]; };
    const bool seen = std::any_of(marks.cleared.begin(), marks.cleared.end(), stood);
    some |= seen;
    all &= seen;
  });
  return !some ? Sight::kNone : all ? Sight::kAll : Sight::kSome;
}

// For what is about to be cleared, and stands no more.
void NoteCleared(X11Connection* x, const X11Mark& mark, const std::vector<uint32_t>& shown) {
  x->marks.cleared.push_back({mark.where, shown, !IsPicture(mark), false, DisplayTick()});
  X11ClearedMark& cleared = x->marks.cleared.back();
  cleared.seen = LookFor(x, cleared) == Sight::kAll;
}

void TakeOff(X11Connection* x, std::list<X11Mark>::iterator mark) {
  std::list<X11Mark> off;
  off.splice(off.end(), x->marks.standing, mark);
  if (!mark->window) return;
  NoteCleared(x, *mark, mark->shown);
  X11CloseMark(x, &*mark);
}

// What stands in the rectangle, cleared for now.
std::list<X11Mark> PutAside(X11Connection* x, const PixelRect& where) {
  X11Marks& marks = x->marks;
  std::list<X11Mark> aside;
  for (auto next = marks.standing.begin(); next != marks.standing.end();) {
    const auto mark = next++;
    if (ShowsIn(*mark, where)) aside.splice(aside.end(), marks.standing, mark);
  }
  for (const X11Mark& mark : aside) NoteCleared(x, mark, mark.shown);
  for (const X11Mark& mark : aside) X11ClearMark(x, mark);
  return aside;
}

// Until the compositor's picture is without the mark. One that paints only what has changed may take it off in parts;
// but what lies below may have pixels like the mark's, so that these are not waited for as long.
void Await(X11Connection* x, X11ClearedMark* mark) {
  for (uint32_t partly = 0; X11Live() && IsRecent(*mark); X11Rest(1)) {
    const Sight sight = LookFor(x, *mark);
    if (sight == Sight::kNone) return;
    mark->seen = true;
    if (sight == Sight::kSome && ++partly > kPartlyLooks) return;
  }
}

// One that was not seen at all may have been missed, or is still to come: it is left for the next look.
void AwaitCleared(X11Connection* x, const PixelRect& where) {
  for (X11ClearedMark& mark : x->marks.cleared) {
    if (ShowsIn(mark, where)) Await(x, &mark);
  }
  std::erase_if(x->marks.cleared,
                [&](const X11ClearedMark& mark) { return ShowsIn(mark, where) && (mark.seen || !IsRecent(mark)); });
}

// Whether what has been read shows marks that were cleared before they had been seen.
bool HasLateMarks(X11Connection* x, const Rows& rows) {
  bool any = false;
  for (X11ClearedMark& mark : x->marks.cleared) {
    bool shows = false;
    ForEachPixel(Intersect(mark.where, rows.where), [&](int32_t column, int32_t row, size_t) {
      const int32_t left = rows.left + column - rows.where.left, top = rows.top + row - rows.where.top;
      shows |= ShownAt(mark, column, row) == X11MarkPixel(x, PixelAt(rows.surface, left, top));
    });
    mark.seen |= shows;
    any |= shows;
  }
  return any;
}

// ---- Inverted pixels ---------------------------------------------------------------------------------------------

// The screen's pixel as it would be without what is inverted. `seen` may be of before the last changes: what stands
// there tells more, and what still shows a mark that has just been cleared shows it no longer.
uint32_t WithoutInverted(const X11Connection* x, int32_t column, int32_t row, uint32_t seen) {
  for (const X11Mark& mark : x->marks.standing) {
    const uint32_t shown = ShownAt(mark, column, row);
    if (shown) return IsPicture(mark) ? shown : X11InverseMarkPixel(x, shown);
  }
  for (const X11ClearedMark& mark : x->marks.cleared) {
    if (mark.inverted && ShownAt(mark, column, row) == seen) return X11InverseMarkPixel(x, seen);
  }
  return seen;
}

// A side of a line that is drawn up has another length each time, and compositors take their time with a new window. So
// it gets the whole column or row that it lies in.
PixelRect RoomFor(const X11Connection* x, const PixelRect& where) {
  if (WidthOf(where) == 1) return {where.left, 0, where.right, x->facts.height};
  if (HeightOf(where) == 1) return {0, where.top, x->facts.width, where.bottom};
  return where;
}

// What the mark is to show. Pixels that were inverted before stay as they are.
std::vector<uint32_t> Inverted(X11Connection* x, const X11Mark& mark) {
  std::vector<uint32_t> shown = mark.shown;
  shown.resize(mark.inverts.size());
  bool more = false;
  for (size_t i = 0; i < shown.size(); i++) {
    if (!mark.inverts[i]) shown[i] = 0;
    more |= mark.inverts[i] && !shown[i];
  }
  if (!more) return shown;
  X11Patch patch = ReadPatch(x, mark.where);
  const std::vector<uint32_t> now = MarkPixels(x, patch);
  ForEachPixel(mark.where, [&](int32_t column, int32_t row, size_t i) {
    if (mark.inverts[i] && !shown[i]) shown[i] = X11InverseMarkPixel(x, WithoutInverted(x, column, row, now[i]));
  });
  return shown;
}

// What is inverted no longer is cleared.
void ShowInverted(X11Connection* x, X11Mark* mark, std::vector<uint32_t> shown) {
  if (shown == mark->shown) return;
  std::vector<uint32_t> gone = std::exchange(mark->shown, std::move(shown));
  for (size_t i = 0; i < gone.size(); i++) gone[i] = mark->shown[i] ? 0 : gone[i];
  if (std::any_of(gone.begin(), gone.end(), [](uint32_t pixel) { return pixel != 0; })) NoteCleared(x, *mark, gone);
  X11ShowMark(x, mark);
}

// A line that has moved lies on its old pixels in part: what is below those is looked up before any of them change.
void SettleInverted(X11Connection* x) {
  X11Marks& marks = x->marks;
  std::erase_if(marks.cleared, [](const X11ClearedMark& mark) { return !IsRecent(mark); });
  struct Change {
    X11Mark* mark;
    std::vector<uint32_t> shown;
  };
  std::vector<Change> changes;
  for (X11Mark& mark : marks.standing) {
    if (!IsPicture(mark) && !InvertsNothing(mark)) changes.push_back({&mark, Inverted(x, mark)});
  }
  // The windows that this leaves serve those that are new.
  for (auto mark = marks.standing.begin(); mark != marks.standing.end();) {
    const auto each = mark++;
    if (InvertsNothing(*each)) TakeOff(x, each);
  }
  for (Change& change : changes) ShowInverted(x, change.mark, std::move(change.shown));
  X11FreeSpareWindows(x, changes.empty() ? 0 : kSparesKept);
}

// ---- The compositor ----------------------------------------------------------------------------------------------

void InvertOnRoot(X11Connection* x, const X11Mark& mark) {
  constexpr uint8_t all[8] = {255, 255, 255, 255, 255, 255, 255, 255};
  ForEachPixel(mark.where, [&](int32_t column, int32_t row, size_t i) {
    if (mark.inverts[i]) X11InvertRoot(x, {column, row, column + 1, row + 1}, all);
  });
}

// What it has shown for us goes onto the root, which is the screen again.
void PutOnRoot(X11Connection* x) {
  X11Marks& marks = x->marks;
  for (X11Mark& mark : marks.standing) {
    if (mark.window) X11CloseMark(x, &mark);
    mark.shown.clear();
  }
  X11FreeSpareWindows(x, 0);
  for (X11Mark& mark : marks.standing) {
    if (IsPicture(mark)) {
      const PixelRect all = {0, 0, WidthOf(mark.where), HeightOf(mark.where)};
      X11PutPixels(x, x->root, SurfaceOf(x, mark.drawn), all, mark.where.left, mark.where.top);
    } else {
      InvertOnRoot(x, mark);
    }
  }
  std::erase_if(marks.standing, IsPicture);
  marks.cleared.clear();
}

bool IsComposited(X11Connection* x) {
  X11Marks& marks = x->marks;
  if (!marks.ownerUnsure) return marks.composited;
  marks.ownerUnsure = false;
  const bool composited = XGetSelectionOwner(x->display, marks.compositor) != None;
  if (composited == marks.composited || !X11Live()) return marks.composited;
  marks.composited = marks.changed = composited;
  if (!composited) PutOnRoot(x);
  return composited;
}

} // namespace

void X11SettleMarks(X11Connection* x) {
  if (!IsComposited(x) || !x->marks.changed) return;
  x->marks.changed = false;
  SettleInverted(x);
}

void X11SettleOldMarks(X11Connection* x) {
  const X11Marks& marks = x->marks;
  if (marks.ownerUnsure || (marks.changed && DisplayTick() - marks.changedAt >= kUnsettledMs)) X11SettleMarks(x);
}

bool DisplayIsComposed() {
  X11Connection* x = X11Live();
  return x && IsComposited(x);
}

bool X11ReadBesideMarks(X11Connection* x, const PixelRect& where, const Surface& into, int32_t toX, int32_t toY) {
  X11Marks& marks = x->marks;
  X11SettleMarks(x);
  if (!marks.composited) return X11ReadScreen(x, where, into, toX, toY);
  const Rows rows = {into, toX, toY, where};
  for (X11Mark& mark : marks.standing) {
    if (IsPicture(mark) && Same(OnScreen(x, mark.where), where)) return CopyFrom(x, mark.drawn, rows), true;
  }
  std::list<X11Mark> aside = PutAside(x, where);
  bool done = false;
  do {
    AwaitCleared(x, where);
    done = X11ReadScreen(x, where, into, toX, toY);
  } while (done && HasLateMarks(x, rows));
  for (X11Mark& mark : aside) X11ShowMark(x, &mark);
  marks.standing.splice(marks.standing.end(), aside);
  marks.read = {};
  if (!done || size_t(AreaOf(where)) * size_t(into.layout.bytesPerPixel) > kReadKeptMost) return done;
  marks.read.where = where;
  CopyTo(x, marks.read, rows);
  return true;
}

bool X11ShowsMarks(const X11Connection* x, const PixelRect& where) {
  const X11Marks& marks = x->marks;
  const auto shows = [&](const auto& mark) { return ShowsIn(mark, where); };
  return marks.composited && (std::any_of(marks.standing.begin(), marks.standing.end(), shows) ||
                              std::any_of(marks.cleared.begin(), marks.cleared.end(), shows));
}

bool X11DrawMark(X11Connection* x, const Surface& from, int32_t left, int32_t top, const PixelRect& where) {
  X11Marks& marks = x->marks;
  X11SettleMarks(x);
  if (!marks.composited) return false;
  auto mark = std::find_if(marks.standing.begin(), marks.standing.end(), [&](const X11Mark& each) {
    return IsPicture(each) && Same(OnScreen(x, each.where), where);
  });
  if (mark == marks.standing.end()) {
    X11Patch below = Same(marks.read.where, where) ? std::exchange(marks.read, {}) : ReadPatch(x, where);
    mark = marks.standing.insert(mark, X11Mark{where, None, {}, {}, {where, {}}, std::move(below)});
  }
  const Rows rows = {from, left, top, where};
  if (AreAlike(x, mark->below, rows)) {
    TakeOff(x, mark);
    X11FreeSpareWindows(x, 0);
    return true;
  }
  CopyTo(x, mark->drawn, rows);
  mark->shown = MarkPixels(x, mark->drawn);
  X11ShowMark(x, &*mark);
  return true;
}

bool X11InvertMark(X11Connection* x, const PixelRect& where, const uint8_t pattern[8]) {
  X11Marks& marks = x->marks;
  if (!marks.compositor) return false;
  const bool composited = IsComposited(x);
  const PixelRect room = RoomFor(x, where);
  auto own = std::find_if(marks.standing.begin(), marks.standing.end(),
                          [&](const X11Mark& mark) { return !IsPicture(mark) && Same(mark.where, room); });
  if (own == marks.standing.end()) {
    own = marks.standing.insert(own, X11Mark{room, None, {}, std::vector<uint8_t>(size_t(AreaOf(room))), {}, {}});
  }
  ForEachPixel(where, [&](int32_t column, int32_t row, size_t) {
    if (!(pattern[row % 8] >> (7 - column % 8) & 1)) return;
    // Whichever rectangle it was inverted in.
    const auto before = std::find_if(marks.standing.begin(), marks.standing.end(),
                                     [=](const X11Mark& mark) { return HoldsInverted(mark, column, row); });
    const bool was = before != marks.standing.end();
    if (was) {
      before->inverts[IndexOf(before->where, column, row)] = 0;
    } else {
      own->inverts[IndexOf(room, column, row)] = 1;
    }
  });
  if (!marks.changed) marks.changedAt = DisplayTick();
  marks.changed = composited;
  if (!composited) std::erase_if(marks.standing, InvertsNothing);
  return composited;
}

bool X11DropMarks(X11Connection* x, const PixelRect& where) {
  X11Marks& marks = x->marks;
  X11SettleMarks(x);
  for (auto mark = marks.standing.begin(); mark != marks.standing.end();) {
    const auto each = mark++;
    if (Same(Intersect(each->where, where), each->where)) TakeOff(x, each);
  }
  X11FreeSpareWindows(x, 0);
  return marks.composited;
}

} // namespace framereel
