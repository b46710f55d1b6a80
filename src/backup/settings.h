// The backup settings "TQ_BKINF.DAT" in the data folder: generation counts, paths that the
// application keeps, and the handshake with the mail-store transfer.
//
// The file is read and written anew for each value, since the mail-store transfer and other
// programs change it too. What is not ours in it stays as it is.
#pragma once

#include <string>
#include <string_view>

namespace tq {

inline constexpr std::string_view kSettingsFile = "TQ_BKINF.DAT";

// What the transfer is asked to do.
enum class Transfer : short { kBackUp = 0, kRestore = 1, kDelete = 2 };
inline constexpr short kTransferAsked = -9;  // the status until the transfer reports
inline constexpr short kTransferDone = 0;

// Writers are true when the value has reached the disk.
class Settings {
 public:
  // With a trailing backslash; empty: every value is absent and nothing can be written.
  explicit Settings(std::string_view data_folder);
  // Those of the data folder that `fldcom` names now.
  static Settings of_application();

  // Kinds 0, 1 and 3 have counts of their own when written, kinds 0, 1 and 2 when read; every other
  // kind shares one. The restore kind is so on purpose: hosts depend on it.
  bool set_generations(short kind, short count) const;
  short generations(short kind) const;
  // At most 259 bytes come back.
  bool set_file_path(short kind, short number, std::string_view path) const;
  std::string file_path(short kind, short number) const;

  bool set_transfer(short mode) const;
  short transfer() const;
  bool set_transfer_status(short status) const;
  short transfer_status() const;
  bool set_transfer_name(std::string_view name) const;
  std::string transfer_name() const;

 private:
  bool write(std::string_view key, std::string_view value) const;
  bool write(std::string_view key, short value) const;
  short number(std::string_view key, short fallback) const;
  std::string text(std::string_view key) const;

  std::string folder_;
};

}  // namespace tq
