# Shared by the two Windows toolchains, which set TQ_MINGW_PREFIX. The posix thread model gives us
# std::mutex and its relatives; -static puts libgcc, libstdc++ and winpthread into each binary, so
# that the DLL and the programs run on a Windows without any of them.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${TQ_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TQ_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${TQ_MINGW_PREFIX}-windres)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)

set(CMAKE_FIND_ROOT_PATH /usr/${TQ_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
