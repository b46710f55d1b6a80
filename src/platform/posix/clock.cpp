#include "platform/posix/clock.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdint>

namespace tq::platform {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;  // from 1601-01-01
// What Windows can turn into a calendar date: the top bit is its sign.
constexpr FileTime kMaxMoment = 0x7FFFFFFFFFFFFFFF;

timespec now() {
  timespec moment{};
  ::clock_gettime(CLOCK_REALTIME, &moment);
  return moment;
}

bool to_calendar(std::time_t seconds, std::int64_t nanoseconds, DateTime& local) {
  std::tm fields{};
  ::tzset();  // localtime_r does not look at a changed time zone by itself
  if (::localtime_r(&seconds, &fields) == nullptr || fields.tm_year < 1601 - 1900) return false;
  const auto word = [](std::int64_t value) { return static_cast<std::uint16_t>(value); };
  local.year = word(fields.tm_year + 1900);
  local.month = word(fields.tm_mon + 1);
  local.day_of_week = word(fields.tm_wday);
  local.day = word(fields.tm_mday);
  local.hour = word(fields.tm_hour);
  local.minute = word(fields.tm_min);
  local.second = word(fields.tm_sec);
  local.milliseconds = word(nanoseconds / 1'000'000);
  return true;
}

}  // namespace

DateTime local_now() {
  DateTime local;
  const timespec moment = now();
  to_calendar(moment.tv_sec, moment.tv_nsec, local);
  return local;
}

FileTime utc_now() {
  const timespec moment = now();
  return posix::from_system(moment.tv_sec, static_cast<std::uint32_t>(moment.tv_nsec));
}

bool to_local(FileTime moment, DateTime& local) {
  local = {};
  if (moment > kMaxMoment) return false;
  const auto ticks = static_cast<std::int64_t>(moment);
  const std::int64_t seconds = ticks / kTicksPerSecond - kSecondsTo1970;
  return to_calendar(static_cast<std::time_t>(seconds), ticks % kTicksPerSecond * 100, local);
}

void sleep_ms(unsigned milliseconds) {
  timespec left{static_cast<std::time_t>(milliseconds / 1000),
                static_cast<long>(milliseconds % 1000) * 1'000'000};
  while (::nanosleep(&left, &left) != 0 && errno == EINTR) {
  }
}

namespace posix {

FileTime from_system(std::int64_t seconds, std::uint32_t nanoseconds) {
  const std::int64_t since_1601 = seconds + kSecondsTo1970;
  if (since_1601 < 0) return 0;
  return static_cast<FileTime>(since_1601) * kTicksPerSecond + nanoseconds / 100;
}

timespec to_system(FileTime moment) {
  timespec system{};
  system.tv_sec = static_cast<std::time_t>(static_cast<std::int64_t>(moment / kTicksPerSecond) -
                                           kSecondsTo1970);
  system.tv_nsec = moment == 0 ? UTIME_OMIT : static_cast<long>(moment % kTicksPerSecond * 100);
  return system;
}

}  // namespace posix
}  // namespace tq::platform
