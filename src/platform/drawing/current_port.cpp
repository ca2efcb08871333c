// The one current Port.
#include "platform/drawing/current_port.h"

namespace framereel {
namespace {

CurrentPortState current;

} // namespace

const CurrentPortState& TheCurrentPort() {
  return current;
}

void StoreCurrentPort(const CurrentPortState& state) {
  current = state;
}

} // namespace framereel
