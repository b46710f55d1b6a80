#include "backup/settings.h"

#include "base/sjis.h"
#include "common/profile.h"
#include "platform/platform.h"
#include "siblings/siblings.h"
#include "tqutil/backup.h"

namespace tq {
namespace {

constexpr std::string_view kSection = "TARQO_BACKUP";
constexpr std::string_view kTransferKey = "trFlg";
constexpr std::string_view kStatusKey = "stsFlg";
constexpr std::string_view kNameKey = "folderName";

constexpr short kDefaultGenerations = 3;
constexpr short kDefaultStatus = 1;

std::string_view word(short kind, short restore_kind) {
  if (kind == TQ_BKUP_CONVERSION) return "conv";
  if (kind == TQ_BKUP_SYNC) return "sync";
  return kind == restore_kind ? "rest" : "bkup";
}

std::string generation_key(short kind, short restore_kind) {
  return std::string(word(kind, restore_kind)) + "Generation";
}

std::string path_key(short kind, short number) {
  constexpr short kNoRestoreKind = TQ_BKUP_CONVERSION;  // "rest" stands in no path key
  return std::string(word(kind, kNoRestoreKind)) + std::to_string(number);
}

}  // namespace

Settings::Settings(std::string_view data_folder) : folder_(data_folder) {}

Settings Settings::of_application() {
  return Settings(sibling_folder(&tFLDCOM_API::FldComGetDataFolder));
}

bool Settings::set_generations(short kind, short count) const {
  constexpr short kWrittenRestoreKind = 3;
  return write(generation_key(kind, kWrittenRestoreKind), count);
}

short Settings::generations(short kind) const {
  constexpr short kReadRestoreKind = 2;
  return number(generation_key(kind, kReadRestoreKind), kDefaultGenerations);
}

bool Settings::set_file_path(short kind, short number, std::string_view path) const {
  return write(path_key(kind, number), path);
}

std::string Settings::file_path(short kind, short number) const {
  return text(path_key(kind, number));
}

bool Settings::set_transfer(short mode) const { return write(kTransferKey, mode); }
short Settings::transfer() const { return number(kTransferKey, 0); }
bool Settings::set_transfer_status(short status) const { return write(kStatusKey, status); }
short Settings::transfer_status() const { return number(kStatusKey, kDefaultStatus); }
bool Settings::set_transfer_name(std::string_view name) const { return write(kNameKey, name); }
std::string Settings::transfer_name() const { return text(kNameKey); }

bool Settings::write(std::string_view key, std::string_view value) const {
  if (folder_.empty()) return false;
  Profile profile;
  // A file that is there and cannot be read is not replaced by one that holds this value alone.
  return profile.load(folder_ + std::string(kSettingsFile)).ok() &&
         profile.set(kSection, key, value).ok() && profile.save().ok() &&
         platform::sync_folder(folder_).ok();
}

bool Settings::write(std::string_view key, short value) const {
  return write(key, std::to_string(value));
}

short Settings::number(std::string_view key, short fallback) const {
  Profile profile;
  if (folder_.empty() || !profile.load(folder_ + std::string(kSettingsFile)).ok()) return fallback;
  return static_cast<short>(profile.number(kSection, key, fallback));
}

std::string Settings::text(std::string_view key) const {
  Profile profile;
  if (folder_.empty() || !profile.load(folder_ + std::string(kSettingsFile)).ok()) return {};
  return std::string(sjis::cut(profile.text(kSection, key, {}), TQ_BKUP_TEXT_SIZE - 1));
}

}  // namespace tq
