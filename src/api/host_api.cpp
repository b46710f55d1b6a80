// Flat functions for the host application: version, paths and texts in its own form, folders,
// siblings.
#include <cstring>
#include <iterator>
#include <string>

#include "base/cp932.h"
#include "base/sjis.h"
#include "common/guarded.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"
#include "siblings/home.h"
#include "siblings/siblings.h"
#include "tqutil/host.h"
#include "tqutil/records.h"
#include "tqutil/syncfld.h"

namespace {

// Copies as much of a converted text as fits, cut before the character that does not; the whole
// size.
template <class CutSize>
int32_t give(const std::string& text, char* out, int32_t size, CutSize cut_size) {
  if (out != nullptr && size > 0) {
    const std::size_t bytes = cut_size(text, static_cast<std::size_t>(size) - 1);
    std::memcpy(out, text.data(), bytes);
    out[bytes] = '\0';
  }
  return static_cast<int32_t>(text.size());
}

std::size_t cut_utf8(const std::string& text, std::size_t max) {
  if (text.size() <= max) return text.size();
  while (max > 0 && (static_cast<unsigned char>(text[max]) & 0xC0) == 0x80) --max;
  return max;
}

// By TQ_FOLDER_*.
constexpr tq::FolderQuery kFolders[] = {
    &tFLDCOM_API::FldComGetProgramFolder, &tFLDCOM_API::FldComGetDefFolder,
    &tFLDCOM_API::FldComGetDataFolder,    &tFLDCOM_API::FldComGetWorkFolder,
    &tFLDCOM_API::FldComGetBackupFolder,  &tFLDCOM_API::FldComGetGroupFolder,
    &tFLDCOM_API::FldComGetMemberFolder};

}  // namespace

const char* TQ_CALL tqVersion() noexcept { return TQUTIL_VERSION; }

short TQ_CALL tqPathFromNative(const char* native, char* path) noexcept {
  tq::copy_text(path, TQ_PATH_SIZE, {});
  return tq::guarded<short>(1, [&] {
    std::string converted;
    if (!tq::platform::path_from_native(tq::view(native), converted).ok()) return 1;
    if (converted.size() > tq::kPathMax) return 1;
    tq::copy_text(path, TQ_PATH_SIZE, converted);
    return 0;
  });
}

short TQ_CALL tqPathToNative(const char* path, char* native, int32_t size) noexcept {
  if (native == nullptr || size <= 0) return 1;
  *native = '\0';
  return tq::guarded<short>(1, [&] {
    std::string converted;
    if (!tq::platform::path_to_native(tq::view(path), converted).ok()) return 1;
    if (converted.size() >= static_cast<std::size_t>(size)) return 1;
    std::memcpy(native, converted.c_str(), converted.size() + 1);
    return 0;
  });
}

int32_t TQ_CALL tqUtf8ToSjis(const char* utf8, int32_t length, char* sjis, int32_t size) noexcept {
  if (utf8 == nullptr || length < 0) return -1;
  return tq::guarded<int32_t>(-1, [&] {
    std::string converted;
    const std::string_view text(utf8, static_cast<std::size_t>(length));
    const std::size_t taken =
        tq::cp932::convert_utf8(text, converted, tq::cp932::Accept::kJisSpellings);
    const int32_t needed = give(converted, sjis, size, tq::sjis::cut_size);
    return taken == text.size() ? needed : -1 - static_cast<int32_t>(taken);
  });
}

int32_t TQ_CALL tqSjisToUtf8(const char* sjis, int32_t length, char* utf8, int32_t size) noexcept {
  if (sjis == nullptr || length < 0) return -1;
  return tq::guarded<int32_t>(-1, [&] {
    const std::string_view text(sjis, static_cast<std::size_t>(length));
    return give(tq::cp932::to_utf8(text), utf8, size, cut_utf8);
  });
}

short TQ_CALL tqGetFolder(short which, char* folder) noexcept {
  tq::copy_text(folder, TQ_PATH_SIZE, {});
  const bool home = which == TQ_FOLDER_HOME;
  if (!home && (which < 0 || static_cast<std::size_t>(which) >= std::size(kFolders))) return 1;
  return tq::guarded<short>(1, [&] {
    std::string found = home ? tq::home_folder() : tq::sibling_folder(kFolders[which]);
    tq::AddBackslash(found);
    if (found.size() > tq::kPathMax) found.clear();
    tq::copy_text(folder, TQ_PATH_SIZE, found);
    return found.empty() ? 1 : 0;
  });
}

short TQ_CALL tqSetSiblings(const tTQ_SIBLINGS* siblings) noexcept {
  if (!tq::guarded(false, [&] { return tq::set_siblings(siblings); })) return 1;
  // The definition folder may be another one now.
  CSyncFldCtl::FreeSyncKeyFile();
  CSyncFldCtl::ReadSyncKeyFile();
  return 0;
}

short TQ_CALL tqGetSiblings(tTQ_SIBLINGS* siblings) noexcept {
  return tq::guarded<short>(1, [&] { return tq::get_siblings(siblings) ? 0 : 1; });
}
