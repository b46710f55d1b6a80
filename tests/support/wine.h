// Whether a Windows test runs under Wine, which does not keep everything that Windows keeps.
#pragma once

#ifdef _WIN32
#include <windows.h>
#endif

namespace tq::test {

inline bool under_wine() {
#ifdef _WIN32
  return ::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
#else
  return false;
#endif
}

}  // namespace tq::test
