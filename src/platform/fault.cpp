// Part of test builds only; what we ship has the empty inline functions of the header.
#include "platform/fault.h"

#include <string>

#include "base/cp932.h"

namespace tq::platform::fault {
namespace {

struct Gate {
  int nth = 0;  // 0: disarmed
  Kind kind = Kind::kFail;
  int passed = 0;   // operations since the last reset
  int counted = 0;  // of these, the ones that can be the n-th
  bool hit = false;
  bool just_hit = false;
  int handles = 0;
};
Gate g_gate;

}  // namespace

void arm(int nth, Kind kind) {
  const int handles = g_gate.handles;
  g_gate = {};
  g_gate.handles = handles;
  g_gate.nth = nth;
  g_gate.kind = kind;
}

void disarm() { g_gate.nth = 0; }
bool hit() { return g_gate.hit; }
int count() { return g_gate.passed; }

Status gate(std::string_view operation, std::string_view path, bool writes) {
  ++g_gate.passed;
  g_gate.just_hit = false;
  if (g_gate.nth == 0) return {};
  if (g_gate.kind != Kind::kDiskFull || writes) ++g_gate.counted;
  g_gate.just_hit = !g_gate.hit && g_gate.counted == g_gate.nth;
  g_gate.hit = g_gate.hit || g_gate.just_hit;
  if (!g_gate.just_hit && !crashed()) return {};
  const Code code = g_gate.kind == Kind::kDiskFull ? Code::kDiskFull : Code::kIo;
  return {code, std::string(operation) + " " + cp932::to_utf8(path) + ": injected fault"};
}

bool leaves_half() { return g_gate.just_hit; }
bool crashed() { return g_gate.nth != 0 && g_gate.hit && g_gate.kind == Kind::kCrash; }

int open_handles() { return g_gate.handles; }
void count_handle(int change) { g_gate.handles += change; }

}  // namespace tq::platform::fault
