// The head of everything that can be drawn into or copied from.
//
// Which Port is current stands in drawing/ports.h.
#pragma once

#include <cstdint>

namespace framereel {

enum PortKind : uint16_t {
  kPortChildWindow = 1, // read from through a context of its own
  kPortOffscreen = 2,
  kPortMainWindow = 3, // read from through the screen context
  kPortScreen = 6,
};

struct Port {
  uint16_t kind; // of PortKind
};

} // namespace framereel
