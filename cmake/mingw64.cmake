# Windows, 64 bit, with Debian's mingw-w64.
set(TQ_MINGW_PREFIX x86_64-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
