// The shared library as a process loads it: the keys are there at once, nothing is made, and all is
// released when it goes.
#include <stdexcept>

#include "support/test.h"
#include "tqutil/config.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

#ifdef _WIN32
// Beside this program.
void* load() { return ::LoadLibraryA("tqutil.dll"); }
void* symbol(void* library, const char* name) {
  return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(library), name));
}
bool unload(void* library) { return ::FreeLibrary(static_cast<HMODULE>(library)) != 0; }
#else
void* load() { return ::dlopen(TQ_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL); }
void* symbol(void* library, const char* name) { return ::dlsym(library, name); }
bool unload(void* library) { return ::dlclose(library) == 0; }
#endif

// The field that a freshly loaded library has for key 1 of application type 5.
short key_after_loading() {
  void* library = load();
  if (library == nullptr) throw std::runtime_error("the library cannot be loaded");
  using GetKey = short(TQ_CALL*)(short, short, int32_t);
  const auto get_key = reinterpret_cast<GetKey>(symbol(library, "SykyGetKey"));
  const short key = get_key == nullptr ? short{-99} : get_key(5, 1, 1);
  EXPECT_TRUE(unload(library));
  return key;
}

TEST(Loading, ReadsTheKeysOfTheMoment) {
  TestHome home;
  home.write("definition\\SYNCKEY.DAT", "H:1\nA:5:1,42:x\n");
  const auto before = home.contents();
  EXPECT_EQ(key_after_loading(), 42);
  home.write("definition\\SYNCKEY.DAT", "H:1\nA:5:1,1:x\n");
  EXPECT_EQ(key_after_loading(), -1) << "unloading released what was read";
  home.write("definition\\SYNCKEY.DAT", "H:1\nA:5:1,42:x\n");
  EXPECT_EQ(home.contents(), before) << "loading makes nothing";
}

TEST(Loading, MakesNoFolders) {
  TestHome home;
  {
    const ScopedVariable gone("TQUTIL_HOME", (home.native() / "no" / "such").string());
    EXPECT_EQ(key_after_loading(), 42) << "the shipped keys";
  }
  EXPECT_TRUE(home.contents().empty());
  home.write("tqutil.ini", "[folders]\ndefinition=no\\such\n");
  EXPECT_EQ(key_after_loading(), -1);
  EXPECT_EQ(home.contents().size(), 1U);
}

}  // namespace
