// Listing field files: three lists, each from its folders and in its own order.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/guarded.h"
#include "common/path.h"
#include "common/record_table.h"
#include "common/sorting.h"
#include "common/text.h"
#include "platform/platform.h"
#include "siblings/siblings.h"
#include "tqutil/csvinfo.h"

using tq::copy_text;

namespace tq {

// One listed field file.
struct tFLDFILE_INFO {
  short number;  // as its header has them
  short number2;
  char name[TQ_PATH_SIZE];  // of the file; what is shown of it in list 1
  char path[TQ_PATH_SIZE];
  char title[TQ_PATH_SIZE];
  char comment[256];
  std::int32_t cap;  // capacity of the table, in its first record
};

template <>
struct RecordTraits<tFLDFILE_INFO> {
  static constexpr std::size_t kBlock = 20;
  static std::int32_t& capacity(tFLDFILE_INFO& first) { return first.cap; }
};

namespace {

// In list 1 a file name is a key of six characters, one more, what is shown, and the extension.
constexpr std::size_t kSortKey = 6;
constexpr std::size_t kShownFrom = 7;

struct FileList {
  std::size_t cursor = 0;
  RecordTable<tFLDFILE_INFO> files;

  void clear() {
    cursor = 0;
    files.clear();
  }

  const tFLDFILE_INFO* next() { return cursor < files.size() ? &files[cursor++] : nullptr; }

  // Adds the field files of a folder. False: no memory. A folder that cannot be searched adds none.
  bool add_folder(FolderQuery query);

  // Puts the files into the order of their names; mSort2 looks at the keys of list 1 only. False:
  // no memory.
  bool mSort() { return sort(std::string_view::npos); }
  bool mSort2() { return sort(kSortKey); }

 private:
  bool sort(std::size_t key);
};

bool FileList::add_folder(FolderQuery query) {
  const std::string folder = sibling_folder(query);
  std::vector<platform::FolderEntry> entries;
  static_cast<void>(platform::list_folder(folder + "*.FLD", entries));
  const tFLDCOM_API& api = fldcom();
  for (const platform::FolderEntry& entry : entries) {
    const std::string path = folder + entry.name;
    if (path.size() > kPathMax) continue;
    tFLDFILE_INFO info{};
    if (api.FldComClassifyFile(api.context, path.c_str(), &info.number, info.title, info.comment,
                               &info.number2) != 0) {
      continue;
    }
    copy_text(info.name, entry.name);
    copy_text(info.path, path);
    if (!files.append(info)) return false;
  }
  return true;
}

bool FileList::sort(std::size_t key) {
  const auto name = [&](std::uint32_t at) { return view(files[at].name).substr(0, key); };
  return files.permute(exchange_order(
      files.size(), [&](std::uint32_t a, std::uint32_t b) { return name(a) < name(b); }));
}

// Leaves of each name what list 1 shows.
void mViewAj(FileList& list) {
  for (tFLDFILE_INFO& info : list.files.records()) {
    const std::string_view name = view(info.name).substr(0, PathExtension(view(info.name)));
    copy_text(info.name, name.size() > kShownFrom ? name.substr(kShownFrom) : std::string_view());
  }
}

void give(short* out, short value) {
  if (out != nullptr) *out = value;
}

void give(char* out, const char (&text)[TQ_PATH_SIZE]) { copy_text(out, TQ_PATH_SIZE, view(text)); }

}  // namespace
}  // namespace tq

struct CCsvInfoCtl::State {
  tq::FileList list1, list2, list3;
};

CCsvInfoCtl::CCsvInfoCtl() : state_(std::make_unique<State>()) {}

CCsvInfoCtl::~CCsvInfoCtl() = default;

short CCsvInfoCtl::GetCsvFldInfoInit1() {
  tq::FileList& list = state_->list1;
  list.clear();
  return tq::guarded<short>(1, [&] {
    if (!list.add_folder(&tFLDCOM_API::FldComGetFldFolder1) || !list.mSort2()) return 1;
    tq::mViewAj(list);
    return 0;
  });
}

short CCsvInfoCtl::GetCsvFldInfoInit2() {
  tq::FileList& list = state_->list2;
  list.clear();
  return tq::guarded<short>(1, [&] {
    const bool listed = list.add_folder(&tFLDCOM_API::FldComGetFldFolder2a) &&
                        list.add_folder(&tFLDCOM_API::FldComGetFldFolder2b) && list.mSort();
    return listed ? 0 : 1;
  });
}

short CCsvInfoCtl::GetCsvFldInfoInit3() {
  tq::FileList& list = state_->list3;
  list.clear();
  return tq::guarded<short>(1, [&] {
    return list.add_folder(&tFLDCOM_API::FldComGetFldFolder3) && list.mSort() ? 0 : 1;
  });
}

short CCsvInfoCtl::GetCsvFldInfoNext1(short* number, short* number2, char* name, char* path) {
  const tq::tFLDFILE_INFO* info = state_->list1.next();
  if (info == nullptr) return 1;
  tq::give(number, info->number);
  tq::give(number2, info->number2);
  tq::give(name, info->name);
  tq::give(path, info->path);
  return 0;
}

short CCsvInfoCtl::GetCsvFldInfoNext2(short* number, short* number2, char* path) {
  const tq::tFLDFILE_INFO* info = state_->list2.next();
  if (info == nullptr) return 1;
  tq::give(number, info->number);
  tq::give(number2, info->number2);
  tq::give(path, info->path);
  return 0;
}

short CCsvInfoCtl::GetCsvFldInfoNext3(short* number, char* name, char* path) {
  const tq::tFLDFILE_INFO* info = state_->list3.next();
  if (info == nullptr) return 1;
  tq::give(number, info->number);
  tq::give(name, info->name);
  tq::give(path, info->path);
  return 0;
}

short CCsvInfoCtl::GetCsvFldInfo1(short number, char* name, char* path) {
  copy_text(name, TQ_PATH_SIZE, {});
  copy_text(path, TQ_PATH_SIZE, {});
  for (const tq::tFLDFILE_INFO& info : state_->list1.files.records()) {
    if (info.number != number) continue;
    tq::give(name, info.name);
    tq::give(path, info.path);
    return 0;
  }
  return 1;
}
