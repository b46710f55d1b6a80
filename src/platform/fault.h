// Makes the n-th operation of the platform layer fail, so that a test can drive a writer through
// all of its failures. Exists in test builds only (TQUTIL_TEST_BUILD); elsewhere `gate` is nothing.
#pragma once

#include <string_view>

#include "base/status.h"

namespace tq::platform::fault {

#ifdef TQUTIL_TEST_BUILD

// What happens at the chosen operation.
enum class Kind : unsigned char {
  kFail,      // it fails with kIo; a failing write leaves half of its bytes
  kDiskFull,  // it fails with kDiskFull; only creating and writing operations count
  kCrash,     // it and everything after it fails: what is on disk is what a killed process leaves
};

// Arms the gate: the operation number `nth` (counted from 1 from now on) fails.
void arm(int nth, Kind kind);
void disarm();
// Whether the armed operation was reached since `arm`.
bool hit();
// Operations that passed the gate since `arm`.
int count();

// Called first by every operation that can fail. `writes` tells the operations that need room on
// the disk. Not ok: the operation must fail with this status.
Status gate(std::string_view operation, std::string_view path, bool writes);

// Right after a refusal by `gate`: whether this is the chosen operation itself, so that a write
// leaves half of its bytes (and not one of those that a crash takes with it).
bool leaves_half();
// Whether the process counts as killed: operations must not even clean up behind themselves.
bool crashed();

// Live open files (File objects and folder searches): a leak counter for tests.
int open_handles();
void count_handle(int change);

// Arms in its constructor, disarms in its destructor.
class FailNth {
 public:
  explicit FailNth(int nth, Kind kind = Kind::kFail) { arm(nth, kind); }
  ~FailNth() { disarm(); }
  FailNth(const FailNth&) = delete;
  FailNth& operator=(const FailNth&) = delete;
  bool hit() const { return fault::hit(); }
};

#else

inline Status gate(std::string_view, std::string_view, bool) { return {}; }
constexpr bool leaves_half() { return false; }
constexpr bool crashed() { return false; }
inline void count_handle(int) {}

#endif

}  // namespace tq::platform::fault
