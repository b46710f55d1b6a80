# Windows, 32 bit, with Debian's mingw-w64.
set(TQ_MINGW_PREFIX i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
