# What every one of our own targets is compiled with: `tq_options`, an interface target that they
# link privately. GoogleTest and the like do not get it, so that our warnings stay ours.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_library(tq_options INTERFACE)
target_compile_options(tq_options INTERFACE -Wall -Wextra -Wshadow -Wconversion -Werror)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^i[3-6]86$")
  # Every x86 that we build for has SSE2. Callers built with other compilers keep the stack aligned to
  # four bytes only.
  target_compile_options(tq_options INTERFACE -msse2 -mstackrealign)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  # GCC's -Wconversion leaves signs alone in C++, and "..."_sjis is made with this extension.
  target_compile_options(tq_options INTERFACE
    -Wno-sign-conversion -Wno-gnu-string-literal-operator-template)
endif()
if(WIN32)
  # Windows 7 is the oldest system that the platform layer is written for.
  target_compile_definitions(tq_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
  # Programs find the DLL in their own folder.
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
  # Tests and tools run through Wine where this is a cross build, in a prefix of the build's own.
  if(CMAKE_CROSSCOMPILING)
    set(CMAKE_CROSSCOMPILING_EMULATOR
        ${PROJECT_SOURCE_DIR}/scripts/wine_run.sh ${PROJECT_BINARY_DIR}/wineprefix)
  endif()
else()
  # Installed programs find the library of their own tree, wherever it is moved.
  set(CMAKE_INSTALL_RPATH $ORIGIN/../${CMAKE_INSTALL_LIBDIR})
  # Files beyond 2 GiB and times beyond 2038 in 32-bit builds too.
  target_compile_definitions(tq_options INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
endif()
