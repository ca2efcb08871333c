// What keys type on the X11 display: the symbols of the layout in force, with all its levels, put together by the
// sequences of the user's locale (dead keys and Compose; the file that Compose(5) tells of) and turned into UTF-8.
//
// It works without an input method: libxkbcommon reads the sequences, and knows which character a symbol is.
#include <X11/XKBlib.h>
#include <X11/keysym.h>
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>

#include "win32/pixels/exhaustion.h"
#include "win32/pixels/utf8.h"
#include "win32/x11/x11_display.h"

namespace framereel {

struct X11Sequences {
  xkb_compose_table* table; // null: there is none to be found, and every symbol stands for itself
  xkb_compose_state* state; // null then too
  KeySym begun;             // the one symbol that a sequence has begun with; NoSymbol when there are none or more
};

namespace {

// Sequences are for text in UTF-8, and some locale without it may be set.
constexpr const char* kAnyLocale = "en_US.UTF-8";

const char* LocaleOfText() {
  for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* locale = std::getenv(name);
    if (locale && *locale) return locale;
  }
  return kAnyLocale;
}

xkb_compose_table* ReadTable() {
  xkb_context* context =
      xkb_context_new(xkb_context_flags(XKB_CONTEXT_NO_DEFAULT_INCLUDES | XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
  if (!context) EndWithoutMemory();
  xkb_context_set_log_level(context, XKB_LOG_LEVEL_CRITICAL); // what a user's own file has wrong is left out
  xkb_compose_table* table = nullptr;
  for (const char* locale : {LocaleOfText(), kAnyLocale}) {
    if (!table) table = xkb_compose_table_new_from_locale(context, locale, XKB_COMPOSE_COMPILE_NO_FLAGS);
  }
  xkb_context_unref(context);
  return table;
}

xkb_compose_state* NewState(xkb_compose_table* table) {
  xkb_compose_state* state = xkb_compose_state_new(table, XKB_COMPOSE_STATE_NO_FLAGS);
  if (!state) EndWithoutMemory();
  return state;
}

X11Sequences& SequencesOf(X11Connection* x) {
  X11Sequences*& sequences = x->keyboard.sequences;
  if (sequences) return *sequences;
  sequences = new X11Sequences{};
  sequences->table = ReadTable();
  if (sequences->table) sequences->state = NewState(sequences->table);
  return *sequences;
}

std::string TextOf(KeySym symbol) {
  const char32_t character = X11CharacterOf(symbol);
  return character ? Utf8Of(character) : "";
}

std::string ComposedText(xkb_compose_state* state) {
  const int length = xkb_compose_state_get_utf8(state, nullptr, 0);
  std::string text(size_t(length) + 1, 0);
  xkb_compose_state_get_utf8(state, text.data(), text.size());
  text.pop_back();
  return text;
}

// The accent as it stands by itself: what it gives with a blank.
std::string AccentAlone(const X11Sequences& sequences, KeySym accent) {
  xkb_compose_state* state = NewState(sequences.table);
  for (const KeySym symbol : {accent, KeySym{XK_space}}) {
    xkb_compose_state_feed(state, static_cast<xkb_keysym_t>(symbol));
  }
  std::string text = xkb_compose_state_get_status(state) == XKB_COMPOSE_COMPOSED ? ComposedText(state) : std::string();
  xkb_compose_state_unref(state);
  return text;
}

// The symbol is the next one of a sequence, or stands for itself.
std::string Continue(X11Sequences* sequences, KeySym symbol) {
  const bool first = xkb_compose_state_get_status(sequences->state) != XKB_COMPOSE_COMPOSING;
  const xkb_compose_feed_result fed = xkb_compose_state_feed(sequences->state, static_cast<xkb_keysym_t>(symbol));
  if (fed == XKB_COMPOSE_FEED_IGNORED) return "";
  const KeySym begun = sequences->begun;
  sequences->begun = NoSymbol;
  switch (xkb_compose_state_get_status(sequences->state)) {
  case XKB_COMPOSE_COMPOSING:
    if (first) sequences->begun = symbol;
    return "";
  case XKB_COMPOSE_COMPOSED:
    return ComposedText(sequences->state);
  case XKB_COMPOSE_CANCELLED:
    // An accent and a letter that it does not stand on come one beside the other; what leads to nothing otherwise is
    // a mistyped sequence, or one that the user has thought better of (Escape, Backspace).
    return X11IsDeadKey(begun) && X11CharacterOf(symbol) >= ' ' ? AccentAlone(*sequences, begun) + TextOf(symbol) : "";
  default:
    return TextOf(symbol);
  }
}

} // namespace

char32_t X11CharacterOf(KeySym symbol) {
  if (symbol == XK_ISO_Left_Tab) return '\t';
  if (symbol == XK_Delete || symbol == XK_Clear || symbol == XK_Linefeed) return 0;
  return xkb_keysym_to_utf32(static_cast<xkb_keysym_t>(symbol));
}

bool X11IsDeadKey(KeySym symbol) {
  return symbol >= XK_dead_grave && symbol <= XK_dead_greek;
}

std::string X11TypedText(X11Connection* x, const XKeyEvent& key) {
  KeySym symbol = NoSymbol;
  unsigned int used;
  XkbLookupKeySym(x->display, static_cast<KeyCode>(key.keycode), key.state, &used, &symbol);
  if (symbol == NoSymbol) return "";
  // Commands are not text, and leave a sequence as it is.
  if (key.state & (ControlMask | Mod1Mask)) return TextOf(symbol);
  X11Sequences& sequences = SequencesOf(x);
  return sequences.state ? Continue(&sequences, symbol) : TextOf(symbol);
}

void X11EndSequence(X11Connection* x) {
  if (!x->keyboard.sequences || !x->keyboard.sequences->state) return;
  xkb_compose_state_reset(x->keyboard.sequences->state);
  x->keyboard.sequences->begun = NoSymbol;
}

void X11ForgetSequences(X11Connection* x) {
  X11Sequences* sequences = x->keyboard.sequences;
  if (!sequences) return;
  xkb_compose_state_unref(sequences->state);
  xkb_compose_table_unref(sequences->table);
  delete sequences;
  x->keyboard.sequences = nullptr;
}

} // namespace framereel
