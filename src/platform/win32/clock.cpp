#include "platform/win32/clock.h"

namespace tq::platform {
namespace {

DateTime from_fields(const SYSTEMTIME& fields) {
  return {fields.wYear, fields.wMonth,  fields.wDayOfWeek, fields.wDay,
          fields.wHour, fields.wMinute, fields.wSecond,    fields.wMilliseconds};
}

}  // namespace

DateTime local_now() {
  SYSTEMTIME fields;
  ::GetLocalTime(&fields);
  return from_fields(fields);
}

FileTime utc_now() {
  FILETIME moment;
  ::GetSystemTimeAsFileTime(&moment);
  return win32::from_system(moment);
}

bool to_local(FileTime moment, DateTime& local) {
  local = {};
  const FILETIME system = win32::to_system(moment);
  SYSTEMTIME utc, fields;
  if (!::FileTimeToSystemTime(&system, &utc)) return false;
  if (!::SystemTimeToTzSpecificLocalTime(nullptr, &utc, &fields)) return false;
  local = from_fields(fields);
  return true;
}

void sleep_ms(unsigned milliseconds) { ::Sleep(milliseconds); }

}  // namespace tq::platform
